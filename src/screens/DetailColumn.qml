import QtQuick
import Quillmere.Presentation

// Holds the screen of the destination. A change of user or server drops the screen with all of its
// state, and so does another archive or language for the browser.
Rectangle {
    id: column

    required property AppStore store
    readonly property string screenIdentity: store.libraryKey + "|" + screenName(store.destination)

    function screenName(destination: string): string {
        switch (destination) {
        case "home":
        case "chat":
        case "wall":
        case "history":
        case "account":
            return destination;
        }
        return destination + store.language;
    }

    color: Ink.paper0

    onScreenIdentityChanged: {
        screen.active = false;
        screen.active = true;
    }

    Loader {
        id: screen

        anchors.fill: parent
        sourceComponent: column.store.destination === "home" ? home : later
    }

    Component {
        id: home

        ArchivesHomeView {
            store: column.store
        }
    }

    // The screens that are still to come.
    Component {
        id: later

        EmptyState {
            symbol: "doc.text"
            title: column.store.words.text("chooseCase")
        }
    }
}
