pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// What is said of a pinned case: can be selected, and is for a screen reader part of its button.
TextEdit {
    id: edit

    readOnly: true
    selectByMouse: true
    activeFocusOnTab: false
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.Wrap
    font: Fonts.face.reading(18)
    color: Ink.paperInk
    selectionColor: Ink.flagship
    selectedTextColor: Ink.paperInk
    Accessible.ignored: true

    LineSpacing {
        document: edit.textDocument
        extra: 3
    }
}
