pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// Invites to a first question.
Column {
    id: opener

    required property AppStore store

    signal picked(question: string)

    spacing: 20

    ExampleQuestions {
        id: examples

        store: opener.store
    }

    TesselMark {
        size: 62
    }

    TextLabel {
        width: opener.width
        text: opener.store.words.text("askHead")
        wrapMode: Text.Wrap
        font: Fonts.face.archivo(54, 800, 62)
        leading: Fonts.face.leading(-2)
        Accessible.role: Accessible.Heading
    }

    TextLabel {
        width: Math.min(650, opener.width)
        text: opener.store.words.text("tesselBody")
        wrapMode: Text.Wrap
        font: Fonts.face.reading(23)
        leading: 3
        color: Ink.dim
    }

    Rectangle {
        width: opener.width
        height: hint.height + 24
        radius: 10
        color: "transparent"
        border.color: Ink.line

        Eyebrow {
            id: hint

            x: 14
            y: 12
            width: parent.width - 28
            words: opener.store.words.text("askOpenHint")
            wrapMode: Text.Wrap
        }
    }

    RowLayout {
        width: opener.width

        Eyebrow {
            Layout.fillWidth: true
            words: opener.store.words.text("askTry")
            elide: Text.ElideRight
            Accessible.role: Accessible.Heading
        }

        QuietButton {
            Layout.rightMargin: -rightPadding
            symbol: "arrow.2.squarepath"
            text: opener.store.words.text("askShuffle")
            onClicked: examples.shuffle()
        }
    }

    Repeater {
        model: examples.questions

        delegate: PlainButton {
            id: example

            required property string modelData

            width: opener.width
            padding: 16
            radius: 12
            ground: Ink.paper2
            Accessible.name: modelData
            onClicked: opener.picked(modelData)

            contentItem: RowLayout {
                spacing: 14

                TextLabel {
                    Layout.fillWidth: true
                    text: example.modelData
                    wrapMode: Text.Wrap
                    font: Fonts.face.reading(19)
                    Accessible.ignored: true
                }

                Symbol {
                    name: "arrow.up.left"
                    size: 15
                    color: Ink.mute
                }
            }
        }
    }
}
