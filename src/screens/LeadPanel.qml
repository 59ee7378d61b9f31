pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// The flagship archive, large.
PlainButton {
    id: panel

    required property AppStore store
    required property real count

    padding: 32
    radius: 20
    ground: Ink.flagship
    Accessible.name: store.words.text("archive.claim.foible")
    Accessible.description: store.words.text("archive.sub.foible")
    onClicked: store.destination = "foible"

    contentItem: ColumnLayout {
        spacing: 22

        RowLayout {
            Layout.fillWidth: true

            TextLabel {
                Layout.fillWidth: true
                text: ArchiveStyle.domain("foible")
                font: Fonts.face.archivo(21, 800, 110)
                color: Ink.paperInk
                Accessible.ignored: true
            }

            Symbol {
                name: "arrow.up.right"
                size: 24
                color: Ink.paperInk
            }
        }

        TextLabel {
            Layout.fillWidth: true
            Layout.maximumWidth: 760
            text: panel.store.words.text("archive.claim.foible")
            wrapMode: Text.Wrap
            font: Fonts.face.archivo(64, 850, 62)
            leading: -3
            color: Ink.paperInk
            Accessible.ignored: true
        }

        RowLayout {
            Layout.fillWidth: true
            spacing: 24

            TextLabel {
                Layout.fillWidth: true
                // The layout would keep the place of a single line for a text that wraps.
                Layout.fillHeight: true
                text: panel.store.words.text("archive.sub.foible")
                wrapMode: Text.Wrap
                verticalAlignment: Text.AlignBottom
                font: Fonts.face.reading(20)
                leading: 3
                color: Ink.paperInk
                Accessible.ignored: true
            }

            ColumnLayout {
                Layout.alignment: Qt.AlignBottom
                spacing: 4

                TextLabel {
                    Layout.alignment: Qt.AlignRight
                    text: panel.store.words.number(panel.count)
                    font: Fonts.face.archivo(44, 800, 62)
                    color: Ink.paperInk
                    Accessible.ignored: true
                }

                TextLabel {
                    Layout.alignment: Qt.AlignRight
                    text: panel.store.words.text("blundersSourced")
                    font: Fonts.face.mono(Fonts.label)
                    color: Ink.paperInk
                    Accessible.ignored: true
                }
            }
        }

        Rectangle {
            Layout.fillWidth: true
            implicitHeight: 1
            color: Ink.paperInk
            opacity: 0.25
        }

        TextLabel {
            Layout.fillWidth: true
            text: panel.store.words.textWithNumber("browseAll", panel.count) + "  →"
            wrapMode: Text.Wrap
            font: Fonts.face.mono(Fonts.control, 600)
            color: Ink.paperInk
            Accessible.ignored: true
        }
    }
}
