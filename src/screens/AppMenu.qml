pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// What the window can be told from anywhere.
MenuPanel {
    id: menu

    required property list<T.Action> commands

    Repeater {
        model: menu.commands

        delegate: MenuRow {
            required property T.Action modelData

            action: modelData
        }
    }
}
