pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// A row of the wall: a chat, or cases side by side.
FocusScope {
    id: row

    required property AppStore store
    required property WallModel wall
    required property real columnWidth
    // The row that the keyboard is in or would come to.
    required property bool reached
    required property bool isChat
    required property string itemId
    required property string title
    required property string domains
    required property bool resumable
    required property bool removable
    required property int first
    // Begins the chats or the cases.
    required property bool leads
    readonly property real airAbove: leads ? heading.implicitHeight + 28 : isChat ? 28 : 18

    signal caseOpened(card: caseCard)
    signal removalWanted(id: string)

    implicitHeight: airAbove + (isChat ? chat.implicitHeight : cells.implicitHeight)

    WallSectionHeading {
        id: heading

        width: row.width
        visible: row.leads
        columnWidth: row.columnWidth
        words: row.store.words.text(row.isChat ? "wallConversations" : "wallCases")
    }

    WallChatRow {
        id: chat

        x: (row.width - width) / 2
        y: row.airAbove
        width: row.columnWidth
        visible: row.isChat
        focus: row.isChat
        store: row.store
        reached: row.reached
        title: row.title
        domains: row.domains
        resumable: row.resumable
        removable: row.removable
        onOpened: row.wall.resume(row.itemId)
        onRemovalWanted: row.removalWanted(row.itemId)
    }

    FocusScope {
        id: cells

        x: chat.x
        y: row.airAbove
        width: row.columnWidth
        implicitHeight: line.implicitHeight
        visible: !row.isChat
        focus: !row.isChat

        RowLayout {
            id: line

            spacing: 18

            Repeater {
                model: WallCells {
                    wall: row.isChat ? null : row.wall
                    first: row.first
                }

                delegate: WallCaseCell {
                    required property int index

                    // Whole, since the layout would round it up and reach beyond the column.
                    Layout.preferredWidth: Math.floor((row.columnWidth + 18) / row.wall.columns - 18)
                    Layout.fillHeight: true
                    focus: index === 0
                    store: row.store
                    reached: row.reached
                    onOpened: row.caseOpened(card)
                    onRemovalWanted: row.removalWanted(itemId)
                }
            }
        }
    }
}
