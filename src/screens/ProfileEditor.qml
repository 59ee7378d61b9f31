pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// One change of the profile, or the end of the account. It stays while the service is being asked.
Sheet {
    id: editor

    required property AppStore store
    required property string action
    readonly property bool deletes: action === "delete"
    readonly property bool secretive: action === "password" || deletes
    readonly property string value: secretive ? secret.password : words.text
    readonly property bool ready: !model.busy && value !== "" && (!deletes || confirmed.checked)

    function label(key: string): string {
        return store.words.text(key);
    }

    function submit() {
        if (ready)
            model.submit(value, old.password);
    }

    width: parent ? Math.min(560, parent.width - 32) : 560
    padding: 32
    title: label(model.titleKey)

    Binding on closePolicy {
        when: model.busy
        value: T.Popup.NoAutoClose
    }

    ProfileEditorModel {
        id: model

        store: editor.store
        action: editor.action
        onSucceeded: {
            words.clear();
            secret.clear();
            old.clear();
            editor.close();
        }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 22

        TextLabel {
            Layout.fillWidth: true
            text: editor.title
            wrapMode: Text.Wrap
            font: Fonts.face.archivo(33, 750, 80)
            Accessible.role: Accessible.Heading
        }

        TextLabel {
            Layout.fillWidth: true
            visible: editor.deletes
            text: editor.label("deleteWarning")
            wrapMode: Text.Wrap
            font: Fonts.face.reading(18)
            leading: 3
        }

        PasswordEntry {
            id: old

            Layout.fillWidth: true
            visible: editor.action === "password"
            focus: visible
            title: editor.label("currentPassword")
            font: Fonts.face.field(19)
            onAccepted: secret.forceActiveFocus(Qt.TabFocusReason)
        }

        PasswordEntry {
            id: secret

            Layout.fillWidth: true
            visible: editor.secretive
            focus: editor.deletes
            title: editor.label(editor.deletes ? "authPassword" : "newPassword")
            font: Fonts.face.field(19)
            onAccepted: editor.submit()
        }

        TextEntry {
            id: words

            Layout.fillWidth: true
            visible: !editor.secretive
            focus: visible
            title: editor.label(editor.action === "email" ? "newEmail" : "newName")
            font: Fonts.face.field(19)
            onAccepted: editor.submit()
        }

        TextLabel {
            Layout.fillWidth: true
            visible: editor.action === "password"
            text: editor.label("authPasswordRules")
            wrapMode: Text.Wrap
            font: Fonts.face.reading(17)
            leading: 3
            color: Ink.dim
        }

        CheckRow {
            id: confirmed

            Layout.fillWidth: true
            visible: editor.deletes
            text: editor.label("deleteAccount")
        }

        TextLabel {
            Layout.fillWidth: true
            visible: text !== ""
            text: model.error
            wrapMode: Text.Wrap
            font: Fonts.face.reading(17)
            leading: 3
            color: Ink.failure
            Accessible.role: Accessible.AlertMessage
        }

        RowLayout {
            Layout.fillWidth: true
            spacing: 12

            BrandButton {
                enabled: !model.busy
                text: editor.label("cancel")
                onClicked: editor.close()
            }

            Item {
                Layout.fillWidth: true
            }

            Spinner {
                visible: model.busy
                label: editor.title
            }

            BrandButton {
                filled: true
                enabled: editor.ready
                text: editor.label(editor.deletes ? "deleteAccount" : "done")
                onClicked: editor.submit()
            }
        }
    }
}
