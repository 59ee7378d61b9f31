pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// The commands of a window, to be chosen by pointer.
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
