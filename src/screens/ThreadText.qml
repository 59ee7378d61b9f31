pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// A text of the conversation that can be selected, shown as it was typed.
TextEdit {
    readOnly: true
    selectByMouse: true
    selectByKeyboard: true
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.Wrap
    color: Ink.paper
    selectionColor: Ink.flagship
    selectedTextColor: Ink.paperInk
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
