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
    // Lines in letters of another script are higher than the font would have them.
    lineHeightMode: leading < 0 ? Text.FixedHeight : Text.ProportionalHeight
    lineHeight: leading < 0 ? Fonts.face.lineHeight(font, leading) : 1 + leading / Fonts.face.lineHeight(font, 0)
}
