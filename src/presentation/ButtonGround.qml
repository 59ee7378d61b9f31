pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// The ground of a control without a look of its own: it comes forward under the pointer, and has a ring
// while the keyboard is there.
Rectangle {
    id: ground

    // Comes forward.
    required property bool raised
    // The keyboard is there.
    required property bool focused
    // Stands on a sheet, which is light in both appearances.
    property bool overSheet: false

    color: "transparent"

    Rectangle {
        anchors.fill: parent
        radius: ground.radius
        color: ground.overSheet ? Ink.paperInk : Ink.paper
        opacity: ground.raised ? 0.05 : 0
    }

    Rectangle {
        anchors.fill: parent
        // Apart from the ground, which may have the ring's own colour.
        anchors.margins: -4
        radius: ground.radius + 4
        visible: ground.focused
        color: "transparent"
        border.color: ground.overSheet ? Ink.paperInk : Ink.brand
        border.width: 2
    }
}
