pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

Rectangle {
    id: sidebar

    required property AppStore store

    // The menu of the window.
    signal menuWanted(control: Item)

    color: Ink.paper0

    Keys.onUpPressed: keyboard.step(false)
    Keys.onDownPressed: keyboard.step(true)
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End;
        if (event.accepted)
            keyboard.goToEnd(event.key === Qt.Key_End);
    }

    KeyboardFocus {
        id: keyboard

        within: sidebar
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.fillWidth: true
            Layout.margins: 22
            spacing: 10

            TesselMark {
                size: 34
            }

            TextLabel {
                Layout.fillWidth: true
                text: "Quillmere\n.Chat"
                font: Fonts.face.archivo(22, 800, 85)
                leading: -3
                Accessible.name: "Quillmere.Chat"
            }

            IconButton {
                id: menuButton

                Layout.alignment: Qt.AlignTop
                Layout.rightMargin: -8
                symbol: "ellipsis"
                help: "Quillmere.Chat"
                tint: Ink.mute
                onClicked: sidebar.menuWanted(menuButton)
            }
        }

        Rectangle {
            Layout.fillWidth: true
            implicitHeight: 1
            color: Ink.line
        }

        ScrollPage {
            id: scroll

            Layout.fillWidth: true
            Layout.fillHeight: true
            contentHeight: rows.implicitHeight + 24
            scrollsByKey: false

            ColumnLayout {
                id: rows

                x: 12
                y: 12
                width: scroll.width - 24
                spacing: 5

                NavigationRow {
                    store: sidebar.store
                    symbol: "square.stack.3d.up"
                    words: sidebar.store.words.text("tab.archives")
                    target: "home"
                }

                NavigationRow {
                    store: sidebar.store
                    symbol: "bubble.left.and.bubble.right"
                    words: sidebar.store.words.text("tab.ask")
                    target: "chat"
                }

                NavigationRow {
                    store: sidebar.store
                    symbol: "rectangle.grid.2x2"
                    words: sidebar.store.words.text("tab.wall")
                    target: "wall"
                    count: sidebar.store.wallCount
                }

                NavigationRow {
                    store: sidebar.store
                    symbol: "clock"
                    words: sidebar.store.words.text("wallConversations")
                    target: "history"
                }

                Eyebrow {
                    Layout.topMargin: 28
                    Layout.bottomMargin: 9
                    Layout.leftMargin: 12
                    Layout.rightMargin: 12
                    Layout.fillWidth: true
                    words: sidebar.store.words.text("allArchives")
                    Accessible.role: Accessible.Heading
                }

                Repeater {
                    model: sidebar.store.archives

                    delegate: ArchiveRow {
                        store: sidebar.store
                    }
                }

                NavigationRow {
                    Layout.topMargin: 8
                    store: sidebar.store
                    symbol: "magnifyingglass"
                    words: sidebar.store.words.text("browseAllShort")
                    target: "all"
                }
            }
        }

        Rectangle {
            Layout.fillWidth: true
            implicitHeight: 1
            color: Ink.line
        }

        ColumnLayout {
            Layout.fillWidth: true
            Layout.margins: 12
            spacing: 8

            NavigationRow {
                store: sidebar.store
                symbol: "person.crop.circle"
                words: sidebar.store.words.text("tab.account")
                target: "account"
            }

            StatusRow {
                Layout.fillWidth: true
                Layout.leftMargin: 12
                Layout.rightMargin: 12
                store: sidebar.store
            }
        }
    }
}
