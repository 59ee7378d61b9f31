pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// The ground of a control without a look of its own: it comes forward under the pointer, and has a ring
// while the keyboard is there.
Rectangle {
    id: ground

    required property T.AbstractButton subject
    // Stands on a sheet, which is light in both appearances.
    property bool overSheet: false
    // Does not come forward.
    property bool quiet: false

    Rectangle {
        anchors.fill: parent
        radius: ground.radius
        color: ground.overSheet ? Ink.paperInk : Ink.paper
        opacity: ground.subject.hovered && !ground.subject.down && !ground.quiet ? 0.05 : 0
    }

    Rectangle {
        anchors.fill: parent
        // Apart from the ground, which may have the ring's own colour.
        anchors.margins: -4
        radius: ground.radius + 4
        visible: ground.subject.visualFocus
        color: "transparent"
        border.color: ground.overSheet ? Ink.paperInk : Ink.brand
        border.width: 2
    }
}
