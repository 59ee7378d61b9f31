pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// A field for a name, all of it selected, so that typing replaces it.
T.TextField {
    id: field

    required property string placeholder

    implicitHeight: contentHeight + 24
    padding: 12
    activeFocusOnTab: true
    selectByMouse: true
    clip: true
    font: Fonts.face.field(18)
    color: Ink.paper
    selectionColor: Ink.flagship
    selectedTextColor: Ink.paperInk
    Accessible.name: placeholder
    Component.onCompleted: selectAll()

    background: Rectangle {
        radius: 9
        color: Ink.paper2
        border.color: field.activeFocus ? Ink.brand : Ink.lineStrong
    }

    TextLabel {
        x: field.leftPadding
        width: field.width - 2 * x
        height: field.height
        visible: field.text === "" && field.preeditText === ""
        text: field.placeholder
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        font: field.font
        color: Ink.mute
        Accessible.ignored: true
    }
}
