pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// A pinned chat: a press goes on with it.
FocusScope {
    id: row

    required property AppStore store
    required property bool reached
    required property string title
    required property string domains
    required property bool resumable
    required property bool removable
    readonly property string shownTitle: title !== "" ? title : store.words.text("wallChatKind")

    signal opened
    signal removalWanted

    implicitHeight: Math.max(content.implicitHeight, remove.implicitHeight)

    PlainButton {
        id: content

        // Its ground reaches out, so that its words stand under the others.
        x: -leftPadding
        width: row.width - remove.width - 12 + leftPadding
        padding: 10
        leftPadding: 14
        enabled: row.resumable
        focus: row.resumable
        focusPolicy: row.reached ? Qt.StrongFocus : Qt.ClickFocus
        Accessible.name: row.shownTitle
        Accessible.description: row.store.words.text("chatContinue")
        onClicked: row.opened()

        contentItem: ColumnLayout {
            spacing: 7

            TextLabel {
                Layout.fillWidth: true
                text: row.shownTitle
                wrapMode: Text.Wrap
                font: Fonts.face.archivo(25, 650, 85)
                Accessible.ignored: true
            }

            TextLabel {
                Layout.fillWidth: true
                visible: text !== ""
                text: row.domains
                wrapMode: Text.Wrap
                font: Fonts.face.mono(Fonts.label)
                color: Ink.mute
            }

            TextLabel {
                Layout.fillWidth: true
                text: row.store.words.text("chatContinue") + "  →"
                font: Fonts.face.mono(Fonts.label)
                opacity: row.resumable ? 1 : 0.42
                Accessible.ignored: true
            }
        }
    }

    IconButton {
        id: remove

        anchors.right: parent.right
        y: 6
        symbol: "trash"
        help: row.store.words.text("removeFromWall")
        enabled: row.removable
        opacity: enabled ? 1 : 0.42
        focus: !row.resumable
        focusPolicy: content.focusPolicy
        Accessible.description: row.shownTitle
        onClicked: row.removalWanted()
    }
}
