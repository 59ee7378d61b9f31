pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// What the window can be told from anywhere.
MenuPanel {
    id: menu

    required property WindowCommands commands

    Repeater {
        model: menu.commands.actions

        delegate: MenuRow {
            required property T.Action modelData

            action: modelData
        }
    }
}
