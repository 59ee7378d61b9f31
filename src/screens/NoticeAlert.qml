pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// The application-wide message, over everything. Any way of dismissing it clears the notice.
Sheet {
    id: alert

    required property AppStore store

    width: parent ? Math.min(420, parent.width - 80) : 420
    padding: 24
    ground: Ink.paper1
    title: "Quillmere.Chat"
    onClosed: store.dismissNotice()

    contentItem: ColumnLayout {
        spacing: 14
        Accessible.role: Accessible.AlertMessage
        Accessible.name: alert.store.notice

        TextLabel {
            Layout.fillWidth: true
            text: alert.title
            font: Fonts.face.archivo(22, 700, 90)
        }

        TextLabel {
            Layout.fillWidth: true
            text: alert.store.notice
            wrapMode: Text.Wrap
            font: Fonts.face.reading(Fonts.body)
            leading: 3
            color: Ink.dim
        }

        BrandButton {
            Layout.alignment: Qt.AlignRight
            Layout.topMargin: 6
            focus: true
            filled: true
            text: alert.store.words.text("close")
            onClicked: alert.close()
        }
    }
}
