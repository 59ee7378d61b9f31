pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// One message of the conversation, with the cases that it cites.
Column {
    id: block

    required property AppStore store
    required property int index
    required property string role
    required property string content
    required property string mode
    readonly property bool asked: role === "user"
    readonly property bool growing: !asked && store.chatting && index === store.messageCount - 1
    readonly property int columns: Math.max(1, Math.floor((width + 14) / (250 + 14)))
    // Whole, since the layout would round it up and reach beyond the column.
    readonly property real cardWidth: Math.floor((width + 14) / columns - 14)

    signal chosen(card: caseCard)

    function author(): string {
        if (asked)
            return store.words.text("you");
        return mode === "evidence-preview" ? store.words.text("preview") : "Quillmere.Chat";
    }

    spacing: 12

    Citations {
        id: citations

        messages: block.store.messages
        row: block.index
    }

    RowLayout {
        width: block.width

        Eyebrow {
            Layout.fillWidth: true
            words: block.author()
            elide: Text.ElideRight
            Accessible.role: Accessible.Heading
        }

        PlainButton {
            id: copy

            readonly property string help: block.store.words.text("copy")

            Layout.rightMargin: -padding
            visible: block.content !== ""
            padding: 8
            Accessible.name: help
            onClicked: Clipboard.setText(block.content)

            contentItem: Symbol {
                name: "doc.on.doc"
                size: 15
                color: Ink.mute
            }

            HelpTip {
                text: copy.help
                subject: copy
            }
        }
    }

    Repeater {
        model: block.asked && block.content !== "" ? 1 : 0

        delegate: ThreadText {
            width: block.width
            text: block.content
            font: Fonts.face.archivo(26, 650, 90)
        }
    }

    Repeater {
        model: block.asked || block.content === "" ? 0 : 1

        delegate: AnswerText {
            width: block.width
            content: block.content
            growing: block.growing
            onLinkActivated: link => block.store.openAddress(link)
        }
    }

    Item {
        width: block.width
        height: grid.height + 6
        visible: citations.count > 0

        GridLayout {
            id: grid

            y: 6
            // A few cards stand side by side and are not spread over the row.
            width: Math.min(citations.count, block.columns) * (block.cardWidth + 14) - 14
            columns: block.columns
            columnSpacing: 14
            rowSpacing: 14

            Repeater {
                model: citations.cards

                delegate: CitationCard {
                    Layout.preferredWidth: block.cardWidth
                    Layout.fillHeight: true
                    Layout.alignment: Qt.AlignTop
                    store: block.store
                    onClicked: block.chosen(cited)
                }
            }
        }
    }
}
