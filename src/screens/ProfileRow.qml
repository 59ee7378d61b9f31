pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation

// One value of the profile, with the way to change it.
RowLayout {
    id: row

    required property string label
    required property string value
    required property string change

    signal wanted

    spacing: 12

    TextLabel {
        Layout.preferredWidth: 110
        text: row.label
        wrapMode: Text.Wrap
        font: Fonts.face.mono(12)
        color: Ink.mute
    }

    TextEdit {
        Layout.fillWidth: true
        text: row.value
        readOnly: true
        selectByMouse: true
        verticalAlignment: TextEdit.AlignVCenter
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
        text: row.change
        onClicked: row.wanted()
    }
}
