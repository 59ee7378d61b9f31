pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// A text that can be pressed.
PlainButton {
    id: button

    property color color: Ink.paper
    property font labelFont: Fonts.face.mono(Fonts.label)
    property string symbol

    horizontalPadding: 4
    verticalPadding: 4
    radius: 5
    opacity: !enabled ? 0.42 : down ? 0.75 : 1
    Accessible.name: text

    contentItem: Row {
        spacing: 6

        TextLabel {
            text: button.text
            font: button.labelFont
            color: button.color
            Accessible.ignored: true
        }

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: button.symbol !== ""
            name: button.symbol
            size: button.labelFont.pixelSize > 0 ? button.labelFont.pixelSize : 12
            color: button.color
        }
    }
}
