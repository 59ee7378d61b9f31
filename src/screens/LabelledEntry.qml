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
    // The toolkit tells nothing of a secret field, not even its name: the group around it does.
    Accessible.role: Accessible.Grouping
    Accessible.name: title
    Accessible.ignored: !entry.secret

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
