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

    ButtonGround {
        anchors.fill: parent
        anchors.leftMargin: -link.outside
        anchors.rightMargin: -link.outside
        raised: pointer.hovered && !tap.pressed
        focused: link.activeFocus
        radius: link.radius
        overSheet: true
    }
}
