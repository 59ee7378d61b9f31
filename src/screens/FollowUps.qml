pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// What to go on with after an answer.
ColumnLayout {
    id: followUps

    required property AppStore store

    signal picked(question: string)

    spacing: 12

    ChatArchives {
        id: archives

        store: followUps.store
    }

    TextLabel {
        Layout.fillWidth: true
        text: followUps.store.words.text("askThreadNote")
        wrapMode: Text.Wrap
        font: Fonts.face.mono(Fonts.label)
        color: Ink.mute
    }

    Flow {
        Layout.fillWidth: true
        spacing: 8

        Repeater {
            model: [followUps.store.words.text("askSuggestSummarise"), followUps.store.words.text("askSuggestWhy"), followUps.store.words.text("askSuggestDo")]

            delegate: BrandButton {
                required property string modelData

                text: modelData
                onClicked: followUps.picked(text)
            }
        }

        QuietButton {
            id: more

            height: 40
            enabled: followUps.store.signedIn
            symbol: "plus.circle"
            text: followUps.store.words.text("askRequestMore")
            onClicked: menu.open()

            MenuPanel {
                id: menu

                // Above: below it there is little room, and it would lie over its own button.
                y: -height - 4

                onClosed: more.forceActiveFocus(Qt.PopupFocusReason)

                Instantiator {
                    model: archives.requests

                    delegate: MenuRow {
                        required property string archive
                        required property string label
                        required property bool open

                        text: label
                        enabled: open
                        opacity: open ? 1 : 0.42
                        onTriggered: followUps.store.beginRequestMoreCases(archive)
                    }

                    onObjectAdded: (index, row) => menu.insertItem(index, row as MenuRow)
                    onObjectRemoved: (index, row) => menu.removeItem(row as MenuRow)
                }
            }
        }
    }
}
