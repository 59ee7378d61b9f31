pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// The line between two columns, with room at its sides to take hold of it.
Rectangle {
    id: line

    implicitWidth: 1
    color: T.SplitHandle.hovered || T.SplitHandle.pressed ? Ink.brand : Ink.line
    containmentMask: Item {
        x: -4
        width: 9
        height: line.height
    }
}
