pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// A field for one line of text. A secret one shows no letters, gives none to assistive technology,
// and lets nothing be copied out of it.
T.TextField {
    id: entry

    required property string title
    property bool secret: false

    implicitHeight: contentHeight + topPadding + bottomPadding
    padding: 13
    activeFocusOnTab: true
    selectByMouse: true
    clip: true
    font: Fonts.face.field(20)
    color: Ink.paper
    selectionColor: Ink.brand
    selectedTextColor: Ink.paper0
    echoMode: secret ? TextInput.Password : TextInput.Normal
    Accessible.name: title
    Accessible.passwordEdit: secret

    background: Rectangle {
        radius: 9
        color: Ink.paper0
        border.color: entry.activeFocus ? Ink.brand : Ink.lineStrong
    }

    TextLabel {
        anchors.fill: parent
        anchors.margins: entry.padding
        visible: entry.text === "" && entry.preeditText === ""
        text: entry.title
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        font: entry.font
        color: Ink.mute
        Accessible.ignored: true
    }
}
