pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// A field to search with. The escape key empties it, and so does the cross at its end.
TextEntry {
    id: entry

    // Of the cross; there is none without it.
    property string clearLabel
    property string symbol: "magnifyingglass"
    readonly property bool hasCross: clearLabel !== "" && text !== ""

    // The user goes on to what was found.
    signal passed

    function takeFocus() {
        forceActiveFocus(Qt.ShortcutFocusReason);
        selectAll();
    }

    padding: 12
    leftPadding: symbol === "" ? padding : padding + glass.width + 10
    rightPadding: hasCross ? cross.width + 10 : padding
    ground: Ink.paper2
    font: Fonts.face.field(17)
    Accessible.searchEdit: true
    Keys.onDownPressed: passed()
    Keys.onEscapePressed: event => {
        event.accepted = text !== "";
        clear();
    }

    Symbol {
        id: glass

        x: entry.padding
        anchors.verticalCenter: parent.verticalCenter
        visible: name !== ""
        name: entry.symbol
        size: 18
        color: Ink.mute
    }

    IconButton {
        id: cross

        anchors.right: parent.right
        anchors.rightMargin: 5
        anchors.verticalCenter: parent.verticalCenter
        visible: entry.hasCross
        symbol: "xmark.circle.fill"
        size: 16
        tint: Ink.mute
        help: entry.clearLabel
        onClicked: {
            entry.clear();
            entry.forceActiveFocus();
        }
    }
}
