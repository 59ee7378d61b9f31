pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

// A numbered section of a case.
Column {
    id: section

    required property AppStore store
    required property TextSelection selection
    required property int number
    required property string label
    required property string body

    spacing: 14

    Item {
        width: parent.width
        height: heading.height

        TextLabel {
            id: figure

            anchors.verticalCenter: parent.verticalCenter
            text: section.number.toString().padStart(2, "0")
            font: Fonts.face.mono(Fonts.label)
            color: Ink.paperMute
            Accessible.ignored: true
        }

        SelectableText {
            id: heading

            x: figure.width + 15
            width: Math.min(implicitWidth, section.width - x)
            selection: section.selection
            text: section.label
            font: Fonts.face.archivo(23, 700, 90)
            Accessible.role: Accessible.Heading
        }

        Rectangle {
            x: heading.x + heading.width + 15
            width: Math.max(0, section.width - x)
            height: 1
            anchors.verticalCenter: parent.verticalCenter
            color: Ink.paperLine
        }
    }

    SelectableText {
        width: parent.width
        selection: section.selection
        text: section.body
        font: Fonts.face.reading(section.store.readingSize)
        leading: 7
    }
}
