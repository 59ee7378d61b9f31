pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// A menu under the control that opens it.
T.Menu {
    id: menu

    function openUnder(control: Item) {
        parent = control;
        open();
    }

    // The toolkit gives the keyboard to the window as a whole, and the user would have to go from its
    // beginning.
    onClosed: {
        if (parent)
            parent.forceActiveFocus(Qt.PopupFocusReason);
    }

    y: parent ? parent.height + 4 : 0
    width: 240
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 6
    margins: 8

    contentItem: ListView {
        implicitHeight: contentHeight
        model: menu.contentModel
        currentIndex: menu.currentIndex
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        T.ScrollBar.vertical: ScrollBarLine {}
    }

    background: Rectangle {
        radius: 9
        color: Ink.paper2
        border.color: Ink.lineStrong
    }
}
