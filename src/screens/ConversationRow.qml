pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// A conversation of the history, and what can be done with it.
FocusScope {
    id: row

    required property AppStore store
    required property real columnWidth
    // The row that the keyboard is in or would come to.
    required property bool reached
    required property string conversationId
    required property string title
    required property string answer
    required property string origin

    signal opened
    signal renameWanted
    signal removalWanted

    implicitHeight: ground.height + 24

    Rectangle {
        id: ground

        x: (row.width - width) / 2
        y: 24
        width: row.columnWidth
        height: content.height
        radius: 12
        color: Ink.paper2

        PlainButton {
            id: content

            width: parent.width
            padding: 14
            rightPadding: 60
            radius: 12
            focus: true
            focusPolicy: row.reached ? Qt.StrongFocus : Qt.ClickFocus
            Accessible.name: row.title
            Accessible.description: row.origin
            onClicked: row.opened()

            contentItem: ColumnLayout {
                spacing: 8

                TextLabel {
                    Layout.fillWidth: true
                    text: row.title
                    wrapMode: Text.Wrap
                    font: Fonts.face.archivo(27, 650, 82)
                    Accessible.ignored: true
                }

                TextLabel {
                    Layout.fillWidth: true
                    text: row.answer
                    wrapMode: Text.Wrap
                    font: Fonts.face.reading(17)
                    leading: 3
                    color: Ink.dim
                }

                TextLabel {
                    Layout.fillWidth: true
                    text: row.origin
                    wrapMode: Text.Wrap
                    font: Fonts.face.mono(Fonts.label)
                    color: Ink.mute
                    Accessible.ignored: true
                }
            }
        }

        IconButton {
            id: more

            x: parent.width - width - 10
            y: 10
            symbol: "ellipsis"
            help: row.store.words.text("actions")
            focusPolicy: content.focusPolicy
            Accessible.description: row.title
            onClicked: menu.open()

            MenuPanel {
                id: menu

                x: more.width - width
                width: 200

                MenuRow {
                    text: row.store.words.text("rename")
                    onTriggered: row.renameWanted()
                }

                MenuRow {
                    text: row.store.words.text("delete")
                    onTriggered: row.removalWanted()
                }
            }
        }
    }
}
