pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// A field for one line of text.
T.TextField {
    id: entry

    required property string title
    property color ground: Ink.paper0

    // Of the font: the dots of a secret, or letters that another font has to lend, are higher.
    implicitHeight: Math.ceil(metrics.height) + topPadding + bottomPadding
    padding: 13
    activeFocusOnTab: true
    selectByMouse: true
    clip: true
    verticalAlignment: TextInput.AlignVCenter
    font: Fonts.face.field(20)
    color: Ink.paper
    selectionColor: Ink.flagship
    selectedTextColor: Ink.paperInk
    Accessible.name: title

    FontMetrics {
        id: metrics

        font: entry.font
    }

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
