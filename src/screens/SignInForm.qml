pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// How a guest becomes somebody.
Card {
    id: form

    required property AppStore store
    required property AccountModel model

    function signIn() {
        signInModel.begin(handle.text, password.password);
    }

    padding: 28
    radius: 18
    spacing: 22

    SignInModel {
        id: signInModel

        store: form.store
        onSucceeded: password.clear()
    }

    Announcement {
        parent: form
        words: signInModel.error
    }

    TextLabel {
        Layout.fillWidth: true
        text: form.store.words.text("tesselAccount")
        wrapMode: Text.Wrap
        font: Fonts.face.reading(23)
        leading: 3
        color: Ink.dim
    }

    GoogleButton {
        visible: form.store.googleAvailable
        enabled: !form.store.authenticating
        text: form.store.words.text("googleContinue")
        onClicked: form.store.loginWithGoogle()
    }

    RowLayout {
        visible: form.store.googleAuthenticating
        spacing: 12

        Spinner {
            label: waiting.text
        }

        TextLabel {
            id: waiting

            text: form.store.words.text("browserWaiting")
            font: Fonts.face.mono(12)
        }

        BrandButton {
            text: form.store.words.text("cancel")
            onClicked: form.store.cancelAuthentication()
        }
    }

    RowLayout {
        visible: form.store.authenticating && !form.store.googleAuthenticating
        spacing: 12

        Spinner {
            label: checking.text
        }

        TextLabel {
            id: checking

            text: form.store.words.text("authChecking")
            font: Fonts.face.mono(12)
        }
    }

    RowLayout {
        Layout.fillWidth: true
        visible: form.store.googleAvailable
        spacing: 12

        Rectangle {
            Layout.fillWidth: true
            implicitHeight: 1
            color: Ink.line
        }

        TextLabel {
            text: form.store.words.text("authOr")
            font: Fonts.face.mono(11)
            color: Ink.mute
        }

        Rectangle {
            Layout.fillWidth: true
            implicitHeight: 1
            color: Ink.line
        }
    }

    ColumnLayout {
        Layout.fillWidth: true
        spacing: 16

        LabelledField {
            Layout.fillWidth: true
            title: form.store.words.text("authName")

            TextEntry {
                id: handle

                width: parent.width
                title: form.store.words.text("authName")
                onAccepted: password.forceActiveFocus(Qt.TabFocusReason)
            }
        }

        LabelledField {
            Layout.fillWidth: true
            title: form.store.words.text("authPassword")

            PasswordEntry {
                id: password

                width: parent.width
                title: form.store.words.text("authPassword")
                onAccepted: form.signIn()
            }
        }

        TextLabel {
            Layout.fillWidth: true
            visible: text !== ""
            text: signInModel.error
            wrapMode: Text.Wrap
            font: Fonts.face.reading(17)
            leading: 3
            color: Ink.failure
            Accessible.role: Accessible.AlertMessage
        }

        BrandButton {
            filled: true
            enabled: !form.store.authenticating && handle.text !== "" && password.password !== ""
            text: form.store.words.text("authSignin")
            onClicked: form.signIn()
        }
    }

    LinkButton {
        // Its words stand under the others.
        Layout.leftMargin: -leftPadding
        text: form.store.words.text("registerWeb")
        labelFont: Fonts.face.mono(12)
        symbol: "arrow.up.right"
        onClicked: form.store.openAddress(form.model.registration)
    }

    TextLabel {
        Layout.fillWidth: true
        visible: form.store.credentialsInFile
        text: form.store.words.text("fileCredentials")
        wrapMode: Text.Wrap
        font: Fonts.face.mono(11)
        color: Ink.mute
    }
}
