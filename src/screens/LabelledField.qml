pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// A field under its label. The field itself tells a screen reader what it is for.
Column {
    id: labelled

    required property string title

    spacing: 8

    Eyebrow {
        words: labelled.title
        Accessible.ignored: true
    }
}
