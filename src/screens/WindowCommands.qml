pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation
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

    // Made here when it is first wanted: in another file the toolkit makes none of a bound component.
    readonly property Component menuMade: MenuPanel {
        Repeater {
            model: commands.actions

            delegate: MenuRow {
                required property T.Action modelData

                action: modelData
            }
        }
    }

    property MenuPanel menu: null

    signal anotherWindowWanted
    signal settingsWanted
    signal closeWanted

    function openMenuUnder(control: Item) {
        if (!menu)
            menu = menuMade.createObject(commands) as MenuPanel;
        menu.openUnder(control);
    }
}
