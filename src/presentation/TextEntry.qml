pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// A field for one line of text.
T.TextField {
    id: entry

    required property string title
    property color ground: Ink.paper0

    implicitHeight: contentHeight + topPadding + bottomPadding
    padding: 13
    activeFocusOnTab: true
    selectByMouse: true
    clip: true
    font: Fonts.face.field(20)
    color: Ink.paper
    selectionColor: Ink.flagship
    selectedTextColor: Ink.paperInk
    Accessible.name: title

    background: Rectangle {
        radius: 9
        color: entry.ground
        border.color: entry.activeFocus ? Ink.brand : Ink.lineStrong
    }

    TextLabel {
        x: entry.leftPadding
        width: entry.width - entry.leftPadding - entry.rightPadding
        height: entry.height
        visible: entry.text === "" && entry.preeditText === ""
        text: entry.title
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        font: entry.font
        color: Ink.mute
        Accessible.ignored: true
    }
}
