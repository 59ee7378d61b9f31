pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// A row of the sidebar: one of a list, of which the open one is selected.
T.ItemDelegate {
    id: row

    required property AppStore store
    // What it opens.
    required property string target
    readonly property bool chosen: store.destination === target

    Layout.fillWidth: true
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 12
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    opacity: down ? 0.75 : 1
    Accessible.selectable: true
    Accessible.selected: chosen
    Accessible.onPressAction: row.clicked()
    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()
    onClicked: store.destination = target

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }

    background: ButtonGround {
        raised: row.hovered && !row.down && !row.chosen
        focused: row.visualFocus
        radius: 9
        color: row.chosen ? Ink.paper2 : "transparent"
    }
}
