pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

// A numbered section of a case.
Column {
    id: section

    required property TextSelection selection
    required property TextSizing sizing
    required property int number
    required property string label
    required property list<string> body

    readonly property real pitch: Fonts.face.lineHeight(Fonts.face.reading(sizing.size), 7)

    spacing: 14

    Item {
        width: parent.width
        height: heading.height

        TextLabel {
            id: figure

            anchors.baseline: heading.baseline
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
            x: Math.ceil(heading.x + heading.width) + 15
            width: Math.max(0, section.width - x)
            height: 1
            anchors.verticalCenter: parent.verticalCenter
            color: Ink.paperLine
        }
    }

    Column {
        width: parent.width
        // A blank line.
        spacing: section.pitch

        Repeater {
            model: section.body

            delegate: SelectableText {
                id: piece

                required property string modelData
                property real size: section.sizing.sizeToBegin()

                width: section.width
                selection: section.selection
                text: modelData
                font: Fonts.face.reading(size)
                leading: 7
                Component.onCompleted: section.sizing.add(piece)
            }
        }
    }
}
