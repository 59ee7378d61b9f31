pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// The way into the chat, with the flagship archive chosen.
PlainButton {
    id: panel

    required property AppStore store
    required property real count

    padding: 28
    radius: 16
    ground: Ink.paper2
    Accessible.name: store.words.textWithNumber("homeAskLine", count)
    Accessible.description: store.words.text("tesselBody")
    onClicked: {
        store.selectOnlyArchive("foible");
        store.newChat();
    }

    contentItem: RowLayout {
        spacing: 22

        Symbol {
            name: "bubble.left.and.text.bubble.right"
            size: 28
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 8

            TextLabel {
                Layout.fillWidth: true
                text: panel.store.words.textWithNumber("homeAskLine", panel.count)
                wrapMode: Text.Wrap
                font: Fonts.face.archivo(29, 750, 80)
                Accessible.ignored: true
            }

            TextLabel {
                Layout.fillWidth: true
                text: panel.store.words.text("tesselBody")
                wrapMode: Text.Wrap
                font: Fonts.face.reading(18)
                leading: 3
                color: Ink.dim
                Accessible.ignored: true
            }
        }

        Symbol {
            name: "arrow.up.right"
            size: 24
        }
    }
}
