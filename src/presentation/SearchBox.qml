pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// A field to search with. The escape key and the cross at its end empty it.
FocusScope {
    id: box

    required property string placeholder
    required property string clearLabel
    property alias fieldName: field.objectName

    signal edited(text: string)
    // The user goes on to what was found.
    signal passed

    function takeFocus() {
        field.forceActiveFocus(Qt.ShortcutFocusReason);
        field.selectAll();
    }

    function clear() {
        field.clear();
        edited("");
        field.forceActiveFocus();
    }

    implicitHeight: field.implicitHeight + 24

    Rectangle {
        anchors.fill: parent
        radius: 9
        color: Ink.paper2
        border.color: field.activeFocus ? Ink.brand : Ink.lineStrong
    }

    Symbol {
        id: glass

        x: 12
        anchors.verticalCenter: parent.verticalCenter
        name: "magnifyingglass"
        size: 18
        color: Ink.mute
    }

    T.TextField {
        id: field

        anchors.left: glass.right
        anchors.leftMargin: 10
        anchors.right: clear.visible ? clear.left : parent.right
        anchors.rightMargin: clear.visible ? 4 : 12
        anchors.verticalCenter: parent.verticalCenter
        implicitHeight: contentHeight
        focus: true
        activeFocusOnTab: true
        selectByMouse: true
        clip: true
        font: Fonts.face.field(17)
        color: Ink.paper
        selectionColor: Ink.brand
        selectedTextColor: Ink.paper0
        Accessible.name: box.placeholder
        Accessible.searchEdit: true
        onTextEdited: box.edited(text)
        Keys.onDownPressed: box.passed()
        Keys.onEscapePressed: event => {
            event.accepted = text !== "";
            if (event.accepted)
                box.clear();
        }

        TextLabel {
            anchors.fill: parent
            visible: field.text === "" && field.preeditText === ""
            text: box.placeholder
            elide: Text.ElideRight
            verticalAlignment: Text.AlignVCenter
            font: field.font
            color: Ink.mute
            Accessible.ignored: true
        }
    }

    PlainButton {
        id: clear

        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        visible: field.text !== ""
        padding: 6
        Accessible.name: box.clearLabel
        onClicked: box.clear()

        contentItem: Symbol {
            name: "xmark.circle.fill"
            size: 16
            color: Ink.mute
        }
    }
}
