pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// A button without a look of its own: its whole area reacts, its content is up to the screen.
T.AbstractButton {
    id: button

    property real radius: 9
    property color ground: "transparent"
    // Stands on a sheet, which is light in both appearances.
    property bool overSheet: false
    // Of a checkable one: whether what it stands for is so. A press alone does not make it so.
    property bool marked: false

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    opacity: down ? 0.75 : 1
    onMarkedChanged: checked = marked
    onToggled: checked = marked

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }

    background: ButtonGround {
        // What is marked has a ground of its own already.
        raised: button.hovered && !button.down && !button.checked
        focused: button.visualFocus
        radius: button.radius
        color: button.ground
        overSheet: button.overSheet
    }

    Accessible.onPressAction: button.clicked()
    // What a screen reader does with a checkable one, and what the toolkit would do without a press.
    Accessible.onToggleAction: button.clicked()
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()
}
