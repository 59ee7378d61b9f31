pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// The application-wide message, over everything. Any way of dismissing it clears the notice.
FocusScope {
    id: alert

    required property AppStore store

    focus: true
    Component.onCompleted: forceActiveFocus()
    Keys.onEscapePressed: store.dismissNotice()

    Rectangle {
        anchors.fill: parent
        color: "black"
        opacity: 0.45

        TapHandler {
            onTapped: alert.store.dismissNotice()
        }

        WheelHandler {}
    }

    Rectangle {
        anchors.centerIn: parent
        width: Math.min(420, parent.width - 80)
        height: content.implicitHeight + 48
        radius: 16
        color: Ink.paper1
        border.color: Ink.lineStrong
        Accessible.role: Accessible.AlertMessage
        Accessible.name: "Quillmere.Chat"
        Accessible.description: message.text

        TapHandler {}

        ColumnLayout {
            id: content

            anchors.fill: parent
            anchors.margins: 24
            spacing: 14

            TextLabel {
                Layout.fillWidth: true
                text: "Quillmere.Chat"
                font: Fonts.face.archivo(22, 700, 90)
            }

            TextLabel {
                id: message

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
                text: alert.store.words.text("done")
                onClicked: alert.store.dismissNotice()
            }
        }
    }
}
