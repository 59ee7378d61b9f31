pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// A line icon. Decoration only: the control around it carries the name.
Image {
    required property string name
    property real size: 20
    property color color: Ink.paper

    width: size
    height: size
    sourceSize.width: size
    sourceSize.height: size
    source: "image://symbol/" + name + "/" + color.toString().slice(-6)
    Accessible.ignored: true
}
