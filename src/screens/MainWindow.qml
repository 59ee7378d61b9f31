pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

Window {
    id: window

    required property AppStore store

    property alias sidebarWidth: root.sidebarWidth

    // With their shortcuts, in the order of the menu.
    readonly property list<T.Action> commands: [
        T.Action {
            text: window.store.words.text("chat.new")
            shortcut: "Ctrl+Shift+N"
            onTriggered: window.store.newChat()
        },
        T.Action {
            text: window.store.words.text("newWindow")
            shortcut: "Ctrl+N"
            onTriggered: window.anotherWindowWanted()
        },
        T.Action {
            text: window.store.words.text("settings")
            shortcut: "Ctrl+,"
            onTriggered: window.settingsWanted()
        },
        T.Action {
            text: window.store.words.text("closeWindow")
            shortcut: "Ctrl+W"
            onTriggered: window.close()
        },
        T.Action {
            text: window.store.words.text("quit")
            shortcut: "Ctrl+Q"
            onTriggered: Qt.quit()
        }
    ]

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

    RootView {
        id: root

        anchors.fill: parent
        store: window.store
        commands: window.commands // qmllint disable
    }

    Loader {
        active: window.store.notice !== ""
        Component.onCompleted: setSource("NoticeAlert.qml", {
            store: window.store
        })
    }

    // A token may have ended, and a membership begun, while the user was elsewhere.
    Connections {
        target: Qt.application

        function onStateChanged() {
            if (Qt.application.state === Qt.ApplicationActive) // qmllint disable
                window.store.beginRefreshAccount();
        }
    }

}
