pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// Work under way. Turns in twelve steps a second, so that a waiting window costs next to nothing.
Item {
    id: spinner

    property real size: 20
    property color color: Ink.mute
    property string label

    implicitWidth: size
    implicitHeight: size
    Accessible.role: Accessible.ProgressBar
    Accessible.name: label

    Repeater {
        model: 8

        Rectangle {
            required property int index

            x: spinner.size / 2 + Math.sin(index * Math.PI / 4) * spinner.size * 0.38 - width / 2
            y: spinner.size / 2 - Math.cos(index * Math.PI / 4) * spinner.size * 0.38 - height / 2
            width: Math.max(2, spinner.size * 0.14)
            height: width
            radius: width / 2
            color: spinner.color
            opacity: 0.15 + 0.85 * ((index - turn.step + 8) % 8) / 7
        }
    }

    Timer {
        id: turn

        property int step: 0

        interval: 1000 / 12
        repeat: true
        running: spinner.visible
        onTriggered: step = (step + 1) % 8
    }
}
