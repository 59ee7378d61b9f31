pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// A symbol to press. Its help text is its name.
PlainButton {
    id: button

    required property string symbol
    required property string help
    property real size: 18
    property color tint: Ink.paper

    padding: 7
    Accessible.name: help

    contentItem: Item {
        implicitWidth: button.size
        implicitHeight: button.size

        Symbol {
            anchors.centerIn: parent
            name: button.symbol
            size: button.size
            color: button.tint
        }
    }

    HelpTip {
        text: button.help
        subject: button
    }
}
