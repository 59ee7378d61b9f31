pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// The address of the service.
Item {
    id: settings

    required property AppStore store

    implicitWidth: 520
    implicitHeight: form.implicitHeight + 56

    Column {
        id: form

        x: 28
        y: 28
        width: parent.width - 56
        spacing: 20

        TextLabel {
            width: parent.width
            text: settings.store.words.text("service")
            font: Fonts.face.archivo(28, 750)
            Accessible.role: Accessible.Heading
        }

        T.TextField {
            id: endpoint

            width: parent.width
            implicitHeight: contentHeight + topPadding + bottomPadding
            padding: 10
            focus: true
            selectByMouse: true
            text: settings.store.baseString
            placeholderText: settings.store.words.text("service")
            font: Fonts.face.field(17)
            color: Ink.paper
            selectionColor: Ink.brand
            selectedTextColor: Ink.paper0
            placeholderTextColor: Ink.mute
            Accessible.name: placeholderText
            onAccepted: settings.store.beginChangeServer(text)

            background: Rectangle {
                radius: 7
                color: Ink.paper2
                border.color: endpoint.activeFocus ? Ink.brand : Ink.lineStrong
                border.width: endpoint.activeFocus ? 2 : 1
            }
        }

        TextLabel {
            width: parent.width
            text: settings.store.words.text("serviceHelp")
            wrapMode: Text.Wrap
            font: Fonts.face.reading(18)
            leading: 3
            color: Ink.dim
        }

        BrandButton {
            filled: true
            text: settings.store.words.text("reconnect")
            onClicked: settings.store.beginChangeServer(endpoint.text)
        }
    }
}
