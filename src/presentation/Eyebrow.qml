pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// A small heading over a block. A screen reader hears the text as it is written.
TextLabel {
    required property string words

    text: words.toUpperCase()
    color: Ink.mute
    font: Fonts.face.mono(Fonts.label, 500, 1.2)
    Accessible.name: words
}
