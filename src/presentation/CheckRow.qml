pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// A statement that can be agreed to.
T.CheckBox {
    id: box

    implicitWidth: implicitContentWidth + leftPadding
    implicitHeight: Math.max(implicitContentHeight, 24)
    leftPadding: 34
    focusPolicy: Qt.StrongFocus
    Accessible.name: text
    Accessible.onPressAction: box.toggle()
    Accessible.onToggleAction: box.toggle()

    indicator: Rectangle {
        y: (box.height - height) / 2
        width: 22
        height: 22
        radius: 5
        color: Ink.paper1
        border.width: box.visualFocus ? 2 : 1
        border.color: box.visualFocus ? Ink.brand : Ink.lineStrong

        Symbol {
            anchors.centerIn: parent
            visible: box.checked
            name: "checkmark"
            size: 16
        }
    }

    contentItem: TextLabel {
        text: box.text
        wrapMode: Text.Wrap
        verticalAlignment: Text.AlignVCenter
        font: Fonts.face.mono(Fonts.caption)
        Accessible.ignored: true
    }
}
