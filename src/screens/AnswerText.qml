pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

// An answer. While it grows the same text stays in place, with what is selected in it; a screen
// reader is given it as a whole at the end.
ThreadText {
    id: answer

    required property string content
    required property bool growing

    font: Fonts.face.reading(20)
    Accessible.name: growing ? "" : getText(0, length)

    AnswerDocument {
        document: answer.textDocument
        text: answer.content
        size: 20
        leading: 5
    }

    HoverHandler {
        cursorShape: answer.hoveredLink === "" ? Qt.IBeamCursor : Qt.PointingHandCursor
    }
}
