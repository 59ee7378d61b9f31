pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Screens

// What a window can be told from anywhere, by shortcut and from a menu.
QtObject {
    id: commands

    required property AppStore store
    // In the order of the menu.
    readonly property list<T.Action> actions: [
        T.Action {
            text: commands.store.words.text("chat.new")
            shortcut: "Ctrl+Shift+N"
            onTriggered: commands.store.newChat()
        },
        T.Action {
            text: commands.store.words.text("newWindow")
            shortcut: "Ctrl+N"
            onTriggered: commands.anotherWindowWanted()
        },
        T.Action {
            text: commands.store.words.text("settings")
            shortcut: "Ctrl+,"
            onTriggered: commands.settingsWanted()
        },
        T.Action {
            text: commands.store.words.text("closeWindow")
            shortcut: "Ctrl+W"
            onTriggered: commands.closeWanted()
        },
        T.Action {
            text: commands.store.words.text("quit")
            shortcut: "Ctrl+Q"
            onTriggered: Qt.quit()
        }
    ]

    signal anotherWindowWanted
    signal settingsWanted
    signal closeWanted
}
