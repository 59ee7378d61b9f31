pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// A case as a card of paper.
PlainButton {
    id: card

    required property AppStore store
    required property string archive
    required property string title
    required property string summary
    required property string era

    padding: 22
    radius: 12
    ground: Ink.sheet
    Accessible.name: title
    Accessible.description: summary

    contentItem: ColumnLayout {
        spacing: 14

        RowLayout {
            Layout.fillWidth: true
            spacing: 10

            Rectangle {
                implicitWidth: 18
                implicitHeight: 18
                radius: 3
                color: ArchiveStyle.color(card.archive)
            }

            Eyebrow {
                Layout.fillWidth: true
                words: ArchiveStyle.domain(card.archive)
                elide: Text.ElideRight
                color: Ink.paperMute
                Accessible.ignored: true
            }

            TextLabel {
                text: card.era
                font: Fonts.face.mono(Fonts.label)
                color: Ink.paperMute
                Accessible.ignored: true
            }
        }

        TextLabel {
            Layout.fillWidth: true
            text: card.title
            wrapMode: Text.Wrap
            maximumLineCount: 3
            elide: Text.ElideRight
            font: Fonts.face.archivo(25, 750, 75)
            color: Ink.paperInk
            Accessible.ignored: true
        }

        TextLabel {
            Layout.fillWidth: true
            text: card.summary
            wrapMode: Text.Wrap
            maximumLineCount: 3
            elide: Text.ElideRight
            font: Fonts.face.reading(18)
            leading: 3
            color: Ink.paperMute
            Accessible.ignored: true
        }

        TextLabel {
            Layout.topMargin: 8
            text: card.store.words.text("cardFile")
            font: Fonts.face.mono(Fonts.label, 600, 1)
            color: Ink.paperInk
            Accessible.ignored: true
        }
    }
}
