pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// One value of the profile, with the way to change it. Not a layout: those give wrapped texts the
// height of another width.
Item {
    id: row

    required property string label
    required property string value
    required property string change

    signal wanted

    implicitHeight: Math.max(name.height, text.height, button.height)

    TextLabel {
        id: name

        anchors.verticalCenter: parent.verticalCenter
        width: 110
        text: row.label
        wrapMode: Text.Wrap
        font: Fonts.face.mono(12)
        color: Ink.mute
    }

    TextEdit {
        id: text

        anchors.verticalCenter: parent.verticalCenter
        anchors.left: name.right
        anchors.leftMargin: 12
        anchors.right: button.left
        anchors.rightMargin: 12
        text: row.value
        readOnly: true
        selectByMouse: true
        wrapMode: TextEdit.Wrap
        textFormat: TextEdit.PlainText
        font: Fonts.face.reading(21)
        color: Ink.paper
        selectionColor: Ink.brand
        selectedTextColor: Ink.paper0
        Accessible.role: Accessible.StaticText
        Accessible.name: row.value
    }

    LinkButton {
        id: button

        anchors.verticalCenter: parent.verticalCenter
        anchors.right: parent.right
        anchors.rightMargin: -rightPadding
        text: row.change
        onClicked: row.wanted()
    }
}
