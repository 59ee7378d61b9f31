pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// What is higher than its window. Scrolls by wheel, bar and keys, and goes along with the keyboard.
Flickable {
    id: page

    // Where the arrow keys mean something else.
    property bool scrollsByKey: true

    function scrollTo(y: real) {
        contentY = Math.max(0, Math.min(y, contentHeight - height));
    }

    function contains(item: Item): bool {
        let above = item;
        while (above && above !== contentItem)
            above = above.parent;
        return above === contentItem;
    }

    // What is higher than the page shows its beginning.
    function reveal(item: Item) {
        const air = 12;
        const top = item.mapToItem(contentItem, 0, 0).y - air;
        const bottom = top + item.height + 2 * air;
        if (top < contentY || bottom - top > height)
            scrollTo(top);
        else if (bottom > contentY + height)
            scrollTo(bottom - height);
    }

    contentWidth: width
    boundsBehavior: Flickable.StopAtBounds
    flickableDirection: Flickable.VerticalFlick
    clip: true

    T.ScrollBar.vertical: ScrollBarLine {}

    Keys.enabled: scrollsByKey
    Keys.onPressed: event => {
        const steps = new Map([[Qt.Key_Up, -60], [Qt.Key_Down, 60], [Qt.Key_PageUp, -0.9 * height], [Qt.Key_PageDown,
                    0.9 * height], [Qt.Key_Home, -contentHeight], [Qt.Key_End, contentHeight]]);
        event.accepted = steps.has(event.key);
        if (event.accepted)
            scrollTo(contentY + steps.get(event.key));
    }

    Connections {
        target: page.Window.window

        // A press of the mouse moves nothing under the pointer.
        function onActiveFocusItemChanged() {
            const control = page.Window.window.activeFocusItem as T.Control; // qmllint disable compiler
            if (control && control.visualFocus && page.contains(control))
                page.reveal(control);
        }
    }
}
