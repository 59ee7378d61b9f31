pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// What stands over the pinned things: how many there are, the filter, and how the last fetch went.
FocusScope {
    id: header

    required property AppStore store
    required property WallModel model
    required property real columnWidth

    signal passed

    implicitHeight: column.implicitHeight + 34

    ColumnLayout {
        id: column

        x: (header.width - width) / 2
        y: 34
        width: header.columnWidth
        spacing: 28

        RowLayout {
            Layout.fillWidth: true
            spacing: 24

            ColumnLayout {
                Layout.fillWidth: true
                spacing: 6

                Eyebrow {
                    Layout.fillWidth: true
                    words: header.store.words.text("wallTitle")
                    Accessible.role: Accessible.Heading
                }

                TextLabel {
                    text: header.store.wallCount
                    font: Fonts.face.archivo(64, 800, 62)
                }

                TextLabel {
                    Layout.fillWidth: true
                    text: header.store.words.text("wallLedeChats")
                    wrapMode: Text.Wrap
                    font: Fonts.face.reading(21)
                    leading: 3
                    color: Ink.dim
                }
            }

            BrandButton {
                Layout.alignment: Qt.AlignTop
                symbol: "arrow.clockwise"
                help: header.store.words.text("syncNow")
                enabled: header.store.signedIn && !header.store.wallLoading
                onClicked: header.store.beginRefreshWall()
            }
        }

        SearchEntry {
            Layout.fillWidth: true
            focus: true
            title: header.store.words.text("searchLibrary")
            clearLabel: header.store.words.text("clearSearch")
            padding: 14
            font: Fonts.face.field(18)
            text: header.model.query
            onTextChanged: header.model.query = text
            onPassed: header.passed()
        }

        TextLabel {
            Layout.fillWidth: true
            visible: !header.store.signedIn
            text: header.store.words.text("accountRequired")
            wrapMode: Text.Wrap
            font: Fonts.face.reading(19)
            leading: 3
        }

        BrandButton {
            visible: !header.store.signedIn
            filled: true
            text: header.store.words.text("authSignin")
            onClicked: header.store.destination = "account"
        }

        TextLabel {
            Layout.fillWidth: true
            visible: header.store.signedIn && header.store.wallOffline
            text: header.store.words.text("offlineCopy")
            wrapMode: Text.Wrap
            font: Fonts.face.mono(Fonts.caption)
            color: Ink.mute
        }

        RowLayout {
            Layout.fillWidth: true
            visible: header.store.signedIn && header.store.wallError !== ""
            spacing: 16

            TextLabel {
                Layout.fillWidth: true
                text: header.store.wallError
                wrapMode: Text.Wrap
                font: Fonts.face.reading(Fonts.body)
                color: Ink.failure
                Accessible.role: Accessible.AlertMessage
            }

            BrandButton {
                text: header.store.words.text("retry")
                onClicked: header.store.beginRefreshWall()
            }
        }

        Spinner {
            Layout.alignment: Qt.AlignHCenter
            Layout.margins: 20
            visible: header.store.signedIn && header.store.wallLoading && header.model.empty
            label: header.store.words.text("wallTitle")
        }
    }
}
