pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// A thin scroll bar that comes forward while it is used.
T.ScrollBar {
    id: bar

    implicitWidth: 12
    padding: 3
    minimumSize: 0.06
    visible: size < 1
    Accessible.ignored: true

    contentItem: Rectangle {
        radius: 3
        color: Ink.mute
        opacity: bar.active || bar.hovered ? 0.7 : 0.25
    }
}
