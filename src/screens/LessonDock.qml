pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// The lesson of the case, at hand while one reads: a bar that unfolds.
Rectangle {
    id: dock

    required property AppStore store
    required property CaseReaderModel model
    required property TextSelection selection
    // Unfolded, a longer lesson is scrolled.
    required property real mostHeight
    readonly property real padding: 20
    // Its words stand in the column of the case.
    readonly property real side: Math.max(padding, (width - 740) / 2)
    property bool open: false

    implicitHeight: bar.height + unfolded.height
    radius: 13
    color: Ink.paper0

    PlainButton {
        id: bar

        width: parent.width
        verticalPadding: dock.padding
        horizontalPadding: dock.side
        radius: dock.radius
        Accessible.name: dock.model.lessonLabel
        checkable: true
        marked: dock.open
        onClicked: dock.open = !dock.open

        contentItem: RowLayout {
            Eyebrow {
                Layout.fillWidth: true
                words: dock.model.lessonLabel
                elide: Text.ElideRight
                Accessible.ignored: true
            }

            Symbol {
                name: dock.open ? "chevron.down" : "chevron.up"
                size: 16
            }
        }
    }

    Flickable {
        id: unfolded

        readonly property real wanted: lesson.height + dock.padding - 6

        y: bar.height - 6
        width: parent.width
        height: dock.open ? Math.min(wanted, dock.mostHeight - bar.height) : 0
        visible: height > 0
        contentHeight: wanted
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height
        clip: true

        T.ScrollBar.vertical: ScrollBarLine {}

        SelectableText {
            id: lesson

            x: dock.side
            width: parent.width - 2 * dock.side
            selection: dock.selection
            text: dock.model.lesson
            font: Fonts.face.archivo(20, 600)
            color: Ink.paper
        }

        Behavior on height {
            NumberAnimation {
                duration: 200
                easing.type: Easing.InOutQuad
            }
        }
    }
}
