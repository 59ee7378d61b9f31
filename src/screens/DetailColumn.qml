pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

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

    function screenFile(destination: string): string {
        switch (destination) {
        case "home":
            return "ArchivesHomeView.qml";
        case "chat":
            return "ChatView.qml";
        case "wall":
            return "WallView.qml";
        case "history":
            return "HistoryView.qml";
        case "account":
            return "AccountView.qml";
        }
        return "CaseBrowserView.qml";
    }

    function rebuild() {
        screen.setSource(screenFile(store.destination), {
            store: store
        });
    }

    color: Ink.paper0
    // Also at the start, when the identity takes its first value.
    onScreenIdentityChanged: rebuild()

    Loader {
        id: screen

        anchors.fill: parent
    }
}
