pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// Limits a new conversation to an archive, or to none.
PlainButton {
    id: pill

    required property AppStore store
    required property string archive
    required property bool selected

    text: archive === "" ? store.words.text("allArchives") : ArchiveStyle.domain(archive)
    horizontalPadding: 12
    verticalPadding: 8
    radius: height / 2
    checkable: true
    marked: selected
    ground: selected ? Ink.paper2 : "transparent"
    opacity: !enabled ? 0.42 : down ? 0.75 : 1
    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: selected

    contentItem: RowLayout {
        spacing: 7

        Rectangle {
            visible: pill.archive !== ""
            implicitWidth: 8
            implicitHeight: 8
            radius: 4
            color: ArchiveStyle.color(pill.archive)
        }

        TextLabel {
            text: pill.text
            font: Fonts.face.mono(Fonts.label)
            Accessible.ignored: true
        }

        Symbol {
            visible: pill.selected
            name: "checkmark"
            size: 12
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: pill.radius
        color: "transparent"
        border.color: pill.selected ? Ink.lineStrong : Ink.line
    }
}
