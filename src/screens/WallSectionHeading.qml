pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

// The heading of a part of the wall.
Item {
    id: heading

    required property string words
    required property real columnWidth

    implicitHeight: 28 + label.implicitHeight + 13

    Eyebrow {
        id: label

        x: (heading.width - width) / 2
        y: 28
        width: heading.columnWidth
        words: heading.words
        Accessible.role: Accessible.Heading
    }

    Rectangle {
        x: label.x
        anchors.bottom: parent.bottom
        width: label.width
        height: 1
        color: Ink.line
    }
}
