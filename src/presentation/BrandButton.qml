pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Quillmere.Presentation

// The labelled button of the program. One without words shows its symbol and tells by its help text
// what it does.
T.AbstractButton {
    id: button

    property bool filled: false
    property bool accent: false
    // Stands on a sheet, which is light in both appearances: so the button is dark in both.
    property bool overSheet: false
    property string symbol
    property real symbolSize: text === "" ? 17 : 16
    property string help
    readonly property color ink: !filled ? Ink.paper : accent ? Ink.paperInk : overSheet ? Ink.sheet : Ink.onPaper

    horizontalPadding: text === "" ? 12 : 16
    verticalPadding: 12
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    opacity: !enabled ? 0.42 : down ? 0.75 : 1

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }

    contentItem: RowLayout {
        spacing: 10

        Symbol {
            visible: button.symbol !== ""
            name: button.symbol
            size: button.symbolSize
            color: button.ink
        }

        TextLabel {
            Layout.fillWidth: true
            visible: text !== ""
            text: button.text
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            font: Fonts.face.mono(Fonts.caption, 600)
            color: button.ink
            Accessible.ignored: true
        }
    }

    background: Rectangle {
        radius: 10
        color: !button.filled ? Ink.paper2 : button.accent ? Ink.flagship : button.overSheet ? Ink.paperInk : Ink.paper
        border.width: button.filled ? 0 : 1
        border.color: button.hovered ? Ink.mute : Ink.lineStrong

        Rectangle {
            anchors.fill: parent
            anchors.margins: -3
            radius: 13
            visible: button.visualFocus
            color: "transparent"
            border.color: button.overSheet ? Ink.paperInk : Ink.brand
            border.width: 2
        }
    }

    HelpTip {
        text: button.help
        subject: button
    }

    Accessible.name: text === "" ? help : text
    Accessible.onPressAction: button.clicked()
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()
}
