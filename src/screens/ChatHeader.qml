pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// The conversation's name, what can be done with it, and the archives that it is asked of.
ColumnLayout {
    id: header

    required property AppStore store
    readonly property bool started: store.messageCount > 0

    spacing: 14

    ChatArchives {
        id: choices

        store: header.store
    }

    RowLayout {
        Layout.fillWidth: true
        spacing: 8

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 4

            Eyebrow {
                Layout.fillWidth: true
                words: header.store.words.text("poweredBy")
                elide: Text.ElideRight
            }

            TextLabel {
                Layout.fillWidth: true
                text: header.started ? header.store.chatTitle : header.store.words.text("askHead")
                elide: Text.ElideRight
                maximumLineCount: 1
                font: Fonts.face.archivo(27, 700, 80)
                Accessible.role: Accessible.Heading
            }
        }

        BrandButton {
            visible: header.started
            enabled: header.store.signedIn && !header.store.chatting && !header.store.pinning
            symbol: header.store.chatPinned ? "bookmark.fill" : "bookmark"
            help: header.store.words.text("saveChat")
            onClicked: header.store.beginPinChat()
        }

        BrandButton {
            symbol: "square.and.pencil"
            help: header.store.words.text("chat.new")
            onClicked: header.store.newChat()
        }

        BrandButton {
            symbol: "clock"
            help: header.store.words.text("wallConversations")
            onClicked: header.store.destination = "history"
        }
    }

    TextLabel {
        Layout.fillWidth: true
        visible: header.started
        text: header.store.words.text("archivesLocked")
        wrapMode: Text.Wrap
        font: Fonts.face.mono(10)
        color: Ink.mute
    }

    // Around the list, since the toolkit must not end a list that is itself hidden while a screen reader
    // follows it.
    Item {
        Layout.fillWidth: true
        Layout.leftMargin: -pills.leftMargin
        // Room for the focus frame of a pill, and for the scroll bar if there is more than fits.
        implicitHeight: pills.contentItem.childrenRect.height + (pills.contentWidth > width ? 12 : 4)
        visible: !header.started

        ListView {
            id: pills

            anchors.fill: parent
            leftMargin: 2
            rightMargin: 2
            orientation: ListView.Horizontal
            boundsBehavior: Flickable.StopAtBounds
            spacing: 8
            clip: true

            model: choices.pills

            delegate: ArchivePill {
                id: pill

                required property int index

                y: 2
                store: header.store
                enabled: !header.store.chatting
                onClicked: choices.toggle(archive)
                onActiveFocusChanged: {
                    if (activeFocus)
                        pills.positionViewAtIndex(index, ListView.Contain);
                }
            }

            T.ScrollBar.horizontal: ScrollBarLine {
                implicitHeight: 6
                padding: 1
            }
        }
    }
}
