pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// The help text of a control, under it while the pointer rests there. There is none before.
Loader {
    id: help

    required property string text
    required property T.AbstractButton subject
    // Who has pressed knows what the control does, and may have opened a menu where the tip would be.
    property bool done: false

    anchors.fill: parent
    active: subject.hovered && !done && text !== ""

    Connections {
        target: help.subject

        function onPressed() {
            help.done = true;
        }

        function onHoveredChanged() {
            if (!help.subject.hovered)
                help.done = false;
        }
    }

    sourceComponent: Item {
        T.ToolTip {
            id: tip

            x: parent ? (parent.width - width) / 2 : 0
            y: parent ? parent.height + 6 : 0
            implicitWidth: implicitContentWidth + leftPadding + rightPadding
            implicitHeight: implicitContentHeight + topPadding + bottomPadding
            horizontalPadding: 10
            verticalPadding: 6
            margins: 6
            delay: 600
            visible: true
            text: help.text

            contentItem: TextLabel {
                text: tip.text
                font: Fonts.face.mono(Fonts.label)
                color: Ink.onPaper
                Accessible.ignored: true
            }

            background: Rectangle {
                radius: 6
                color: Ink.paper
            }
        }
    }
}
