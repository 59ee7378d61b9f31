pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// A field under its label.
Column {
    id: field

    required property string title
    property alias secret: entry.secret
    property alias text: entry.text

    signal accepted

    function takeFocus() {
        entry.forceActiveFocus(Qt.TabFocusReason);
    }

    function clear() {
        entry.clear();
    }

    spacing: 8

    Eyebrow {
        words: field.title
        Accessible.ignored: true
    }

    TextEntry {
        id: entry

        width: field.width
        title: field.title
        onAccepted: field.accepted()
    }
}
