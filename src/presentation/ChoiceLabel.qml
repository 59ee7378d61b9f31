pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// What a row of a menu or picker says, with a mark at the chosen one.
Item {
    id: label

    required property string text
    required property bool marked
    // Leaves room for the mark.
    property bool markable: true
    readonly property real room: markable ? 22 : 0

    implicitWidth: words.implicitWidth + room
    implicitHeight: words.implicitHeight

    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        visible: label.marked
        name: "checkmark"
        size: 14
    }

    TextLabel {
        id: words

        x: label.room
        width: label.width - x
        anchors.verticalCenter: parent.verticalCenter
        text: label.text
        elide: Text.ElideRight
        font: Fonts.face.mono(Fonts.caption)
        Accessible.ignored: true
    }
}
