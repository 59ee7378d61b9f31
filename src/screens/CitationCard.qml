pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// A case that an answer rests on.
PlainButton {
    id: card

    required property AppStore store
    required property string archive
    required property string title
    required property caseCard cited
    required property string reason
    required property bool weak
    readonly property string weakness: weak ? store.words.text("askWeak") : ""

    padding: 18
    radius: 12
    ground: Ink.sheet
    overSheet: true
    Accessible.name: title
    Accessible.description: weak ? weakness + ". " + reason : reason

    contentItem: ColumnLayout {
        spacing: 10

        RowLayout {
            Layout.fillWidth: true
            spacing: 8

            Rectangle {
                implicitWidth: 9
                implicitHeight: 9
                radius: 4.5
                color: ArchiveStyle.color(card.archive)
            }

            Eyebrow {
                Layout.fillWidth: true
                words: ArchiveStyle.domain(card.archive)
                elide: Text.ElideRight
                color: Ink.paperMute
                Accessible.ignored: true
            }
        }

        TextLabel {
            Layout.fillWidth: true
            text: card.title
            wrapMode: Text.Wrap
            font: Fonts.face.archivo(21, 700, 80)
            color: Ink.paperInk
            Accessible.ignored: true
        }

        TextLabel {
            Layout.fillWidth: true
            visible: card.weak
            text: card.weakness
            wrapMode: Text.Wrap
            font: Fonts.face.mono(10)
            color: Ink.paperMute
            Accessible.ignored: true
        }

        TextLabel {
            Layout.fillWidth: true
            text: card.reason
            wrapMode: Text.Wrap
            font: Fonts.face.reading(16)
            leading: 3
            color: Ink.paperMute
            Accessible.ignored: true
        }

        Item {
            Layout.fillHeight: true
        }

        Eyebrow {
            Layout.fillWidth: true
            words: card.store.words.text("cardFile")
            elide: Text.ElideRight
            color: Ink.paperInk
            Accessible.ignored: true
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: card.radius
        color: "transparent"
        border.color: Ink.paperLine
    }
}
