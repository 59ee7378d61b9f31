pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// Narrows the list under it while one types. The escape key empties it.
FocusScope {
    id: filter

    required property string placeholder
    required property real size
    property string symbol
    property alias text: field.text
    property real padding: 14

    // The user goes on to what was found.
    signal passed

    implicitHeight: field.implicitHeight + 2 * padding

    Rectangle {
        anchors.fill: parent
        radius: 9
        color: Ink.paper2
        border.color: field.activeFocus ? Ink.brand : Ink.line
    }

    Symbol {
        id: glass

        x: filter.padding
        anchors.verticalCenter: parent.verticalCenter
        visible: filter.symbol !== ""
        name: filter.symbol
        size: 18
        color: Ink.mute
    }

    T.TextField {
        id: field

        anchors.left: glass.visible ? glass.right : parent.left
        anchors.leftMargin: glass.visible ? 10 : filter.padding
        anchors.right: parent.right
        anchors.rightMargin: filter.padding
        anchors.verticalCenter: parent.verticalCenter
        implicitHeight: contentHeight
        focus: true
        activeFocusOnTab: true
        selectByMouse: true
        clip: true
        font: Fonts.face.field(filter.size)
        color: Ink.paper
        selectionColor: Ink.flagship
        selectedTextColor: Ink.paperInk
        Accessible.name: filter.placeholder
        Accessible.searchEdit: true
        Keys.onDownPressed: filter.passed()
        Keys.onEscapePressed: event => {
            event.accepted = text !== "";
            clear();
        }

        TextLabel {
            anchors.fill: parent
            visible: field.text === "" && field.preeditText === ""
            text: filter.placeholder
            elide: Text.ElideRight
            verticalAlignment: Text.AlignVCenter
            font: field.font
            color: Ink.mute
            Accessible.ignored: true
        }
    }
}
