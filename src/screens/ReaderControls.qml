pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// What can be done with the case as a whole: pin it, set its text larger or smaller, share it.
RowLayout {
    id: controls

    required property AppStore store
    required property CaseReaderModel model

    spacing: 8

    ReaderControl {
        Layout.maximumWidth: controls.width - 2 * (34 + controls.spacing)
        enabled: controls.model.pinnable
        symbol: controls.model.pinned ? "bookmark.fill" : "bookmark"
        text: controls.store.words.text(controls.model.pinned ? "saved" : "saveToWall")
        checkable: true
        marked: controls.model.pinned
        onClicked: controls.model.togglePin()
    }

    Item {
        Layout.fillWidth: true
    }

    ReaderControl {
        symbol: "textformat.size"
        help: controls.store.words.text("readingSize")
        onClicked: sizeMenu.open()

        MenuPanel {
            id: sizeMenu

            x: parent ? parent.width - width : 0
            width: 120

            MenuRow {
                text: "A−"
                onTriggered: controls.store.readingSize -= 1
            }

            MenuRow {
                text: "A+"
                onTriggered: controls.store.readingSize += 1
            }
        }
    }

    ReaderControl {
        visible: controls.model.shareAddress !== ""
        symbol: "square.and.arrow.up"
        help: controls.store.words.text("shareCase")
        onClicked: shareMenu.open()

        MenuPanel {
            id: shareMenu

            x: parent ? parent.width - width : 0

            MenuRow {
                text: controls.store.words.text("copyAddress")
                onTriggered: controls.model.copyAddress()
            }

            MenuRow {
                text: controls.store.words.text("openInBrowser")
                onTriggered: controls.model.openInBrowser()
            }

            MenuRow {
                text: controls.store.words.text("sendByMail")
                onTriggered: controls.model.sendByMail()
            }
        }
    }
}
