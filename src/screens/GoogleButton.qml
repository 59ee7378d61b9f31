pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// The sign-in button in the look that the other side asks for, the same in light and dark.
T.AbstractButton {
    id: button

    implicitWidth: implicitContentWidth + 48
    implicitHeight: 48
    leftPadding: 24
    rightPadding: 24
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    opacity: !enabled ? 0.42 : down ? 0.75 : 1
    Accessible.name: text
    Accessible.onPressAction: button.clicked()
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }

    contentItem: Row {
        spacing: 12

        // The letter stands for the other side's picture, which may not be given away with a program.
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: "G"
            font.pixelSize: 20
            font.weight: Font.Medium
            color: "#1F1F1F"
            Accessible.ignored: true
        }

        // In the system's letters, which are near to those of the other side.
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: button.text
            font.pixelSize: 16
            color: "#1F1F1F"
            Accessible.ignored: true
        }
    }

    background: Rectangle {
        radius: 24
        color: "white"
        border.color: "#747775"

        Rectangle {
            anchors.fill: parent
            anchors.margins: -3
            radius: 27
            visible: button.visualFocus
            color: "transparent"
            border.color: Ink.brand
            border.width: 2
        }
    }
}
