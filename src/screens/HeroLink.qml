pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// The way to what accompanies the case.
PlainButton {
    id: link

    required property AppStore store
    required property CaseReaderModel model

    overSheet: true
    padding: 20
    radius: 12
    ground: Ink.sheet
    Accessible.role: Accessible.Link
    Accessible.name: model.heroLabel
    onClicked: store.openAddress(model.heroAddress)

    contentItem: RowLayout {
        spacing: 15

        TextLabel {
            Layout.fillWidth: true
            text: link.model.heroLabel
            wrapMode: Text.Wrap
            font: Fonts.face.archivo(20, 650)
            color: Ink.paperInk
            Accessible.ignored: true
        }

        Symbol {
            name: "arrow.up.right"
            color: Ink.paperInk
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: link.radius
        color: "transparent"
        border.color: Ink.paperInk
    }
}
