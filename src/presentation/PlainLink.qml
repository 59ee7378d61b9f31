pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// Leads out of the program, from a sheet; its content is up to the screen. A screen reader knows it
// as a link, which no button of the toolkit can be.
Item {
    id: link

    required property string name
    property real radius: 4
    // How far the ground under the pointer and the ring of the keyboard reach beyond the sides.
    property real outside: 0

    signal clicked

    activeFocusOnTab: true
    opacity: tap.pressed ? 0.75 : 1
    Accessible.role: Accessible.Link
    Accessible.name: name
    Accessible.onPressAction: link.clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    HoverHandler {
        id: pointer

        cursorShape: Qt.PointingHandCursor
    }

    TapHandler {
        id: tap

        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: link.clicked()
    }

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: -link.outside
        anchors.rightMargin: -link.outside
        radius: link.radius
        color: Ink.paperInk
        opacity: pointer.hovered && !tap.pressed ? 0.05 : 0
    }

    Rectangle {
        anchors.fill: parent
        anchors.margins: -4
        anchors.leftMargin: -link.outside - 4
        anchors.rightMargin: -link.outside - 4
        radius: link.radius + 4
        visible: link.activeFocus
        color: "transparent"
        border.color: Ink.paperInk
        border.width: 2
    }
}
