pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// The form with which the server is changed.
Rectangle {
    id: settings

    required property AppStore store

    function reconnect() {
        store.beginChangeServer(endpoint.text);
    }

    implicitWidth: 520
    implicitHeight: rows.implicitHeight + 56
    color: Ink.paper0

    ColumnLayout {
        id: rows

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 28
        spacing: 20

        TextLabel {
            Layout.fillWidth: true
            text: settings.store.words.text("service")
            wrapMode: Text.Wrap
            font: Fonts.face.archivo(28, 750)
            Accessible.role: Accessible.Heading
        }

        TextEntry {
            id: endpoint

            Layout.fillWidth: true
            focus: true
            title: settings.store.words.text("service")
            font: Fonts.face.field(19)
            inputMethodHints: Qt.ImhUrlCharactersOnly
            onAccepted: settings.reconnect()
            Component.onCompleted: text = settings.store.baseString
        }

        TextLabel {
            Layout.fillWidth: true
            text: settings.store.words.text("serviceHelp")
            wrapMode: Text.Wrap
            font: Fonts.face.reading(18)
            leading: 3
            color: Ink.dim
        }

        BrandButton {
            filled: true
            text: settings.store.words.text("reconnect")
            onClicked: settings.reconnect()
        }
    }
}
