pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// The labelled button of the program.
T.AbstractButton {
    id: button

    property bool filled: false
    property bool accent: false

    leftPadding: 16
    rightPadding: 16
    topPadding: 12
    bottomPadding: 12
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    opacity: !enabled ? 0.42 : down ? 0.75 : 1

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }

    contentItem: TextLabel {
        text: button.text
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        font: Fonts.face.mono(Fonts.caption, 600)
        color: !button.filled ? Ink.paper : button.accent ? Ink.paperInk : Ink.onPaper
        Accessible.ignored: true
    }

    background: Rectangle {
        radius: 10
        color: !button.filled ? Ink.paper2 : button.accent ? Ink.flagship : Ink.paper
        border.width: button.filled ? 0 : 1
        border.color: button.hovered ? Ink.mute : Ink.lineStrong

        Rectangle {
            anchors.fill: parent
            anchors.margins: -3
            radius: 13
            visible: button.visualFocus
            color: "transparent"
            border.color: Ink.brand
            border.width: 2
        }
    }

    Accessible.name: text
    Accessible.onPressAction: button.clicked()
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()
}
