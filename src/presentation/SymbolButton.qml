pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// A button that shows a symbol and tells by its help text what it does.
BrandButton {
    id: button

    required property string help
    property real symbolSize: 17

    leftPadding: 12
    rightPadding: 12
    Accessible.name: help

    contentItem: Item {
        implicitWidth: Math.max(18, button.symbolSize)
        implicitHeight: implicitWidth

        Symbol {
            anchors.centerIn: parent
            name: button.symbol
            size: button.symbolSize
            color: button.ink
        }
    }

    HelpTip {
        text: button.help
        visible: button.hovered && !button.down
    }
}
