pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// Stands over the whole window and has it to itself until it is closed: by escape, by a press beside
// it, or by its own controls. The keyboard goes back to where it was.
T.Dialog {
    id: sheet

    property color ground: Ink.paper0
    property Item before: null
    // A menu that led here closes after the sheet has opened, and would take the keyboard with it.
    readonly property Timer soon: Timer {
        interval: 0
        onTriggered: sheet.takeKeyboard()
    }

    function takeKeyboard() {
        if (!opened || activeFocus)
            return;
        before = parent.Window.activeFocusItem;
        forceActiveFocus(Qt.PopupFocusReason);
    }

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    parent: T.Overlay.overlay
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 2) : 0
    padding: 1
    modal: true
    focus: true
    visible: true
    onAboutToShow: before = parent.Window.activeFocusItem
    onOpened: soon.start()
    onClosed: {
        if (before)
            before.forceActiveFocus(Qt.PopupFocusReason);
    }

    background: Rectangle {
        radius: 14
        color: sheet.ground
        border.color: Ink.lineStrong
    }

    T.Overlay.modal: Rectangle {
        color: Qt.rgba(0, 0, 0, 0.45)
    }
}
