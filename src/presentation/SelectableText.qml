pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// A text that can be selected with the mouse, together with the others of its selection.
TextEdit {
    id: edit

    required property TextSelection selection
    // Extra distance between lines, in points.
    property real leading: 0

    readOnly: true
    selectByMouse: false
    activeFocusOnPress: false
    persistentSelection: true
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.Wrap
    color: Ink.paperInk
    selectionColor: Ink.flagship
    selectedTextColor: Ink.paperInk
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Component.onCompleted: selection.add(edit)

    LineSpacing {
        document: edit.textDocument
        extra: Fonts.face.leading(edit.leading)
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        cursorShape: Qt.IBeamCursor
        preventStealing: true
        onPressed: mouse => {
            const point = Qt.point(mouse.x, mouse.y);
            if (mouse.button === Qt.RightButton)
                edit.selection.menuWanted(edit, point);
            else if (mouse.button === Qt.LeftButton)
                edit.selection.begin(edit, point);
        }
        onPositionChanged: mouse => {
            if (pressedButtons & Qt.LeftButton)
                edit.selection.extend(edit, Qt.point(mouse.x, mouse.y));
        }
        onReleased: edit.selection.finish()
        onCanceled: edit.selection.finish()
        onDoubleClicked: mouse => {
            if (mouse.button === Qt.LeftButton)
                edit.selection.selectWord(edit, Qt.point(mouse.x, mouse.y));
        }
    }
}
