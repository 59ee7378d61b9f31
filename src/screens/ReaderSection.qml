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
    required property list<string> body

    readonly property font face: Fonts.face.reading(store.readingSize)
    readonly property real pitch: Fonts.face.lineHeight(face, 7)

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
            x: heading.x + heading.width + 15
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
                required property string modelData

                width: section.width
                selection: section.selection
                text: modelData
                font: section.face
                leading: 7
            }
        }
    }
}
