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

    readonly property bool wanted: subject.hovered && !done && text !== ""

    anchors.fill: parent
    onWantedChanged: {
        if (wanted)
            setSource("HelpTipPanel.qml", {
                words: text
            });
        else
            source = "";
    }

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
}
