pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

Window {
    id: window

    required property AppStore store

    property alias sidebarWidth: root.sidebarWidth

    signal anotherWindowWanted
    signal settingsWanted

    width: 1320
    height: 880
    minimumWidth: 980
    minimumHeight: 680
    visible: true
    title: "Quillmere.Chat"
    color: Ink.paper0
    // In the next turn of the event loop, while the desktop brings the window onto the screen.
    Component.onCompleted: store.beginConnect()

    WindowCommands {
        id: commands

        store: window.store
        onAnotherWindowWanted: window.anotherWindowWanted()
        onSettingsWanted: window.settingsWanted()
        onCloseWanted: window.close()
    }

    RootView {
        id: root

        anchors.fill: parent
        store: window.store
        onMenuWanted: control => commands.openMenuUnder(control)
    }

    Loader {
        active: window.store.notice !== ""
        Component.onCompleted: setSource("NoticeAlert.qml", {
            store: window.store
        })
    }

    // A token may have ended, and a membership begun, while the user was elsewhere.
    Connections {
        target: Application

        function onStateChanged() {
            if (Application.state === Qt.ApplicationActive)
                window.store.beginRefreshAccount();
        }
    }

}
