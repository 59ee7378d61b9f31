pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

// Where a case of the list belongs: its archive and its time.
Item {
    id: origin

    required property string archive
    required property string era

    implicitHeight: name.implicitHeight

    Rectangle {
        id: square

        anchors.verticalCenter: parent.verticalCenter
        width: 8
        height: 8
        radius: 2
        color: ArchiveStyle.color(origin.archive)
    }

    Eyebrow {
        id: name

        anchors.left: square.right
        anchors.leftMargin: 8
        anchors.right: time.left
        anchors.rightMargin: 8
        words: origin.archive
        elide: Text.ElideRight
        Accessible.ignored: true
    }

    Text {
        id: time

        anchors.right: parent.right
        width: Math.min(implicitWidth, parent.width / 2)
        text: origin.era
        textFormat: Text.PlainText
        elide: Text.ElideRight
        font: Fonts.face.mono(Fonts.label)
        color: Ink.mute
    }
}
