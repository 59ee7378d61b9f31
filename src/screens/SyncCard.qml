pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// How far this machine and the account agree.
Card {
    id: card

    required property AppStore store
    required property AccountModel model
    readonly property bool busy: store.syncing || store.wallLoading

    spacing: 14

    Eyebrow {
        words: card.store.words.text("sync")
    }

    TextLabel {
        Layout.fillWidth: true
        text: card.store.words.text("syncSigned")
        wrapMode: Text.Wrap
        font: Fonts.face.reading(18)
        leading: 3
        color: Ink.dim
    }

    RowLayout {
        spacing: 14

        BrandButton {
            enabled: !card.busy
            text: card.store.words.text("syncNow")
            onClicked: card.model.beginSync()
        }

        Spinner {
            visible: card.busy
            label: card.store.syncStatus
        }

        TextLabel {
            visible: !card.busy
            text: card.store.words.text(card.model.synced ? "syncDone" : "syncPending")
            font: Fonts.face.mono(11)
            color: Ink.mute
        }
    }

    TextLabel {
        Layout.fillWidth: true
        text: card.store.syncStatus
        wrapMode: Text.Wrap
        font: Fonts.face.mono(10)
        color: Ink.mute
        Accessible.role: Accessible.StatusBar
    }
}
