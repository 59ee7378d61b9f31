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
    readonly property bool ready: !model.busy && value.text !== "" && (!deletes || confirmed.checked)

    function label(key: string): string {
        return store.words.text(key);
    }

    function submit() {
        if (ready)
            model.submit(value.text, old.text);
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
            value.clear();
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

        TextEntry {
            id: old

            Layout.fillWidth: true
            visible: editor.action === "password"
            focus: visible
            secret: true
            title: editor.label("currentPassword")
            font: Fonts.face.field(19)
            onAccepted: value.forceActiveFocus(Qt.TabFocusReason)
        }

        TextEntry {
            id: value

            Layout.fillWidth: true
            focus: !old.visible
            secret: editor.action === "password" || editor.deletes
            title: editor.label(editor.deletes ? "authPassword" : editor.action === "password" ? "newPassword" : editor.action === "email" ? "newEmail" : "newName")
            font: Fonts.face.field(19)
            onAccepted: editor.submit()
        }

        TextLabel {
            Layout.fillWidth: true
            visible: editor.action === "password"
            text: editor.label("authPasswordRules")
            wrapMode: Text.Wrap
            font: Fonts.face.reading(17)
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
            color: "#FF6347"
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
