pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// What a row of a menu or picker says, with a mark at the chosen one.
Item {
    id: label

    required property string text
    required property bool marked

    implicitWidth: words.implicitWidth + 22
    implicitHeight: words.implicitHeight

    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        visible: label.marked
        name: "checkmark"
        size: 14
    }

    TextLabel {
        id: words

        x: 22
        width: label.width - 22
        anchors.verticalCenter: parent.verticalCenter
        text: label.text
        elide: Text.ElideRight
        font: Fonts.face.mono(Fonts.caption)
        Accessible.ignored: true
    }
}
