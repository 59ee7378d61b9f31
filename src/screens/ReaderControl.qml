pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// A quiet button on paper: a symbol, and its words or else a help text.
PlainButton {
    id: control

    required property string symbol
    property string help

    overSheet: true
    horizontalPadding: text === "" ? 9 : 12
    verticalPadding: 8
    opacity: !enabled ? 0.42 : down ? 0.75 : 1
    Accessible.name: text === "" ? help : text

    contentItem: RowLayout {
        spacing: 8

        Symbol {
            name: control.symbol
            size: 16
            color: Ink.paperInk
        }

        TextLabel {
            Layout.fillWidth: true
            visible: text !== ""
            text: control.text
            elide: Text.ElideRight
            font: Fonts.face.mono(Fonts.label, 600)
            color: Ink.paperInk
            Accessible.ignored: true
        }
    }

    HelpTip {
        text: control.help
        subject: control
    }

    Rectangle {
        anchors.fill: parent
        radius: control.radius
        color: "transparent"
        border.color: Ink.paperLine
    }
}
