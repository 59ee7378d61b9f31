pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// Where a guest signs in and a user sees profile, plan and synchronisation; with the settings of
// the program for everybody.
ScrollPage {
    id: view

    required property AppStore store

    function edit(action: string) {
        editor.setSource("ProfileEditor.qml", {
            store: store,
            action: action
        });
    }

    contentHeight: column.height + 72

    AccountModel {
        id: model

        store: view.store
    }

    ColumnLayout {
        id: column

        x: Math.max(36, (view.width - width) / 2)
        y: 36
        width: Math.min(850, view.width - 72)
        spacing: 28

        RowLayout {
            Layout.fillWidth: true

            Eyebrow {
                Layout.fillWidth: true
                words: view.store.words.text("acctEyebrow")
            }

            TesselMark {
                size: 42
            }
        }

        TextLabel {
            Layout.fillWidth: true
            text: view.store.signedIn ? view.store.account.user.handle : view.store.words.text("authJoin")
            wrapMode: Text.Wrap
            font: Fonts.face.archivo(52, 800, 70)
            Accessible.role: Accessible.Heading
        }

        Loader {
            id: identity

            readonly property bool signedIn: view.store.signedIn

            function show() {
                if (signedIn)
                    setSource("AccountGroups.qml", {
                        store: view.store,
                        model: model
                    });
                else
                    setSource("SignInForm.qml", {
                        store: view.store,
                        model: model
                    });
            }

            Layout.fillWidth: true
            onSignedInChanged: show()
            Component.onCompleted: show()
        }

        Connections {
            target: identity.item
            ignoreUnknownSignals: true

            function onEditing(action: string) {
                view.edit(action);
            }
        }

        SettingsCard {
            Layout.fillWidth: true
            store: view.store
            model: model
        }

        RowLayout {
            spacing: 8

            LinkButton {
                // Its words stand under the others.
                Layout.leftMargin: -leftPadding
                text: view.store.words.text("privacy")
                color: Ink.mute
                onClicked: view.store.openAddress(model.privacy)
            }

            TextLabel {
                text: "·"
                font: Fonts.face.mono(11)
                color: Ink.mute
                Accessible.ignored: true
            }

            LinkButton {
                text: view.store.words.text("terms")
                color: Ink.mute
                onClicked: view.store.openAddress(model.terms)
            }

            TextLabel {
                Layout.leftMargin: 8
                text: model.version
                font: Fonts.face.mono(11)
                color: Ink.mute
            }
        }
    }

    Loader {
        id: editor
    }

    Connections {
        target: editor.item
        ignoreUnknownSignals: true

        function onClosed() {
            editor.source = "";
        }
    }
}
