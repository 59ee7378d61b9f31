pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// A text as a screen reader knows one: a bare Text does not exist for it, and a label of the toolkit
// could be no heading.
Text {
    id: label

    // Extra distance between lines, in points.
    property real leading: 0

    color: Ink.paper
    textFormat: Text.PlainText
    lineHeightMode: leading === 0 ? Text.ProportionalHeight : Text.FixedHeight
    lineHeight: leading === 0 ? 1 : Fonts.face.lineHeight(font, leading)
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.focusable: false
}
