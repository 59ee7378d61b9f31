pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// Where an account asks, and where a guest is told how.
Rectangle {
    id: composer

    required property AppStore store
    // Another thing has the window.
    required property bool covered

    function compose(question: string) {
        prompt.prompt = question;
        field.compose();
    }

    implicitHeight: (store.signedIn ? form.implicitHeight : invitation.implicitHeight) + 28
    radius: 14
    color: Ink.paper2
    border.color: field.typing ? Ink.brand : Ink.lineStrong

    PromptModel {
        id: prompt

        store: composer.store
    }

    RowLayout {
        id: invitation

        x: 14
        y: 14
        width: parent.width - 28
        visible: !composer.store.signedIn
        spacing: 14

        TextLabel {
            Layout.fillWidth: true
            text: composer.store.words.text("askSigninMessage")
            wrapMode: Text.Wrap
            font: Fonts.face.reading(17)
        }

        BrandButton {
            filled: true
            text: composer.store.words.text("authSignin")
            onClicked: composer.store.destination = "account"
        }
    }

    ColumnLayout {
        id: form

        x: 14
        y: 14
        width: parent.width - 28
        visible: composer.store.signedIn
        spacing: 8

        TextLabel {
            Layout.fillWidth: true
            visible: text !== ""
            text: prompt.quotaLine
            wrapMode: Text.Wrap
            font: Fonts.face.mono(Fonts.label)
            color: Ink.mute
        }

        RowLayout {
            Layout.fillWidth: true
            spacing: 12

            PromptField {
                id: field

                Layout.fillWidth: true
                // Its words stand under the line above.
                Layout.leftMargin: -4
                model: prompt
            }

            BrandButton {
                Layout.alignment: Qt.AlignBottom
                enabled: prompt.sendable
                filled: true
                accent: true
                symbol: "arrow.up"
                symbolSize: 19
                help: composer.store.words.text("askSend")
                onClicked: prompt.send()
            }
        }
    }

    Shortcut {
        sequences: ["Ctrl+Return", "Ctrl+Enter"]
        enabled: composer.enabled && !composer.covered && prompt.sendable
        onActivated: prompt.send()
    }
}
