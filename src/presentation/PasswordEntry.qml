pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// A field for a password. It shows no letters and lets none be copied out. A screen reader is told of
// a place without any text: the toolkit would read the letters out of a text field.
FocusScope {
    id: entry

    required property string title
    property font font: Fonts.face.field(20)
    // Not "text": a screen reader would find it.
    property alias password: input.text

    signal accepted

    function clear() {
        input.clear();
    }

    // Of the font, whatever stands in it.
    implicitHeight: Math.ceil(metrics.height) + 26
    activeFocusOnTab: true
    Accessible.role: Accessible.EditableText
    Accessible.passwordEdit: true
    Accessible.editable: true
    Accessible.focusable: true
    // Of a password field the toolkit tells no name.
    Accessible.name: title
    Accessible.description: title

    FontMetrics {
        id: metrics

        font: entry.font
    }

    Rectangle {
        anchors.fill: parent
        radius: 9
        color: Ink.paper0
        border.color: input.activeFocus ? Ink.brand : Ink.lineStrong
    }

    TextInput {
        id: input

        anchors.fill: parent
        anchors.leftMargin: 13
        anchors.rightMargin: 13
        focus: true
        selectByMouse: true
        clip: true
        echoMode: TextInput.Password
        // The toolkit's own dot is in no font of ours, and is as high as a letter.
        passwordCharacter: "•"
        inputMethodHints: Qt.ImhSensitiveData
        verticalAlignment: TextInput.AlignVCenter
        font: entry.font
        color: Ink.paper
        selectionColor: Ink.flagship
        selectedTextColor: Ink.paperInk
        onAccepted: entry.accepted()
    }

    TextLabel {
        anchors.fill: input
        visible: input.text === "" && input.preeditText === ""
        text: entry.title
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        font: entry.font
        color: Ink.mute
        Accessible.ignored: true
    }
}
