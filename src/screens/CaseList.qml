pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// The cases found. The arrow keys go from case to case, the enter key opens one.
ListView {
    id: list

    required property CaseBrowserModel browser
    // Where the keyboard is does not concern a user of the mouse.
    property bool usesKeys: true

    function takeFocus() {
        usesKeys = true;
        forceActiveFocus(Qt.TabFocusReason);
    }

    function goTo(row: int) {
        currentIndex = Math.max(0, Math.min(count - 1, row));
    }

    model: browser.cards
    activeFocusOnTab: true
    reuseItems: true
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    highlightMoveDuration: 0
    Accessible.role: Accessible.List
    Accessible.name: browser.title

    T.ScrollBar.vertical: ScrollBarLine {}

    delegate: CaseRow {
        width: list.width
        chosen: key === list.browser.selected
        marked: activeFocus && list.usesKeys
        // A row that waits to be used again is not drawn, but a screen reader would still find it.
        ListView.onPooled: visible = false
        ListView.onReused: visible = true
        onOpened: list.browser.selected = key
        onClicked: {
            list.usesKeys = false;
            list.currentIndex = index;
            list.forceActiveFocus(Qt.MouseFocusReason);
            opened();
        }
    }

    Keys.onPressed: event => {
        usesKeys = true;
        const rows = Math.max(1, Math.floor(height * count / Math.max(1, contentHeight)) - 1);
        switch (event.key) {
        case Qt.Key_Home:
            goTo(0);
            break;
        case Qt.Key_End:
            goTo(count - 1);
            break;
        case Qt.Key_PageUp:
            goTo(currentIndex - rows);
            break;
        case Qt.Key_PageDown:
            goTo(currentIndex + rows);
            break;
        default:
            return;
        }
        event.accepted = true;
    }

    Connections {
        target: list.browser

        function onReplaced() {
            list.currentIndex = 0;
            list.positionViewAtBeginning();
        }
    }
}
