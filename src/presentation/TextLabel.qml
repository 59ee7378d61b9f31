pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// A text as a screen reader knows one: a bare Text does not exist for it.
T.Label {
    id: label

    // Extra distance between lines, in points.
    property real leading: 0

    color: Ink.paper
    textFormat: Text.PlainText
    lineHeightMode: leading === 0 ? Text.ProportionalHeight : Text.FixedHeight
    lineHeight: leading === 0 ? 1 : Fonts.face.lineHeight(font, leading)
}
