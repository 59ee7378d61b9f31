pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// What is higher than its window. Scrolls by wheel, bar and keys, and goes along with the keyboard.
Flickable {
    id: page

    // Where the arrow keys mean something else.
    property bool scrollsByKey: true
    readonly property real lowest: Math.max(0, contentHeight + bottomMargin - height)

    function scrollTo(y: real) {
        glide.stop();
        contentY = Math.max(0, Math.min(y, lowest));
    }

    function glideTo(y: real) {
        glide.stop();
        glide.to = Math.max(0, Math.min(y, lowest));
        glide.start();
    }

    // What is higher than the page shows its beginning.
    function reveal(item: Item) {
        const air = 12;
        const top = item.mapToItem(contentItem, 0, 0).y - air;
        const bottom = top + item.height + 2 * air;
        const room = height - bottomMargin;
        if (top < contentY || bottom - top > room)
            scrollTo(top);
        else if (bottom > contentY + room)
            scrollTo(bottom - room);
    }

    contentWidth: width
    boundsBehavior: Flickable.StopAtBounds
    flickableDirection: Flickable.VerticalFlick
    clip: true
    onMovementStarted: glide.stop()

    T.ScrollBar.vertical: ScrollBarLine {}

    Keys.enabled: scrollsByKey
    Keys.onPressed: event => {
        const leaf = 0.9 * (height - bottomMargin);
        event.accepted = true;
        switch (event.key) {
        case Qt.Key_Space:
            glideTo(contentY + (event.modifiers & Qt.ShiftModifier ? -leaf : leaf));
            break;
        case Qt.Key_PageDown:
            glideTo(contentY + leaf);
            break;
        case Qt.Key_PageUp:
            glideTo(contentY - leaf);
            break;
        case Qt.Key_Home:
            glideTo(0);
            break;
        case Qt.Key_End:
            glideTo(lowest);
            break;
        case Qt.Key_Down:
            scrollTo(contentY + 60);
            break;
        case Qt.Key_Up:
            scrollTo(contentY - 60);
            break;
        default:
            event.accepted = false;
        }
    }

    KeyboardFocus {
        within: page.contentItem
        onMoved: item => page.reveal(item)
    }

    NumberAnimation {
        id: glide

        target: page
        property: "contentY"
        duration: 250
        easing.type: Easing.InOutQuad
    }
}
