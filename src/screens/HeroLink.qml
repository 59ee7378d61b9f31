pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// The way to what accompanies the case.
PlainLink {
    id: link

    required property AppStore store
    required property CaseReaderModel model

    implicitHeight: words.implicitHeight + 40
    radius: 12
    name: model.heroLabel
    onClicked: store.openAddress(model.heroAddress)

    RowLayout {
        id: words

        x: 20
        y: 20
        width: link.width - 40
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
