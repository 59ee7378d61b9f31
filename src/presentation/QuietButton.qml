pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation

// Words without a border, after a symbol if there is one.
PlainButton {
    id: button

    property string symbol
    property color ink: Ink.dim

    horizontalPadding: 10
    verticalPadding: 8
    opacity: !enabled ? 0.42 : down ? 0.75 : 1
    Accessible.name: text

    contentItem: RowLayout {
        spacing: 8

        Symbol {
            visible: button.symbol !== ""
            name: button.symbol
            size: 15
            color: button.ink
        }

        TextLabel {
            text: button.text
            font: Fonts.face.mono(Fonts.label)
            color: button.ink
            Accessible.ignored: true
        }
    }
}
