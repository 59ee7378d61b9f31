pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// Words that nobody sees and a screen reader speaks when they change. It takes notice of what comes
// into view, not of another name.
Item {
    id: announcement

    required property string words

    width: 1
    height: 1
    visible: false
    onWordsChanged: {
        visible = false;
        visible = words !== "";
    }
    Accessible.role: Accessible.Notification
    Accessible.name: words
}
