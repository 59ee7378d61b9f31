pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// A pinned case on paper: a press opens it, if it is of an archive known here.
FocusScope {
    id: cell

    required property AppStore store
    required property bool reached
    required property string itemId
    required property string title
    required property string body
    required property caseCard card
    required property bool openable
    required property bool removable

    signal opened
    signal removalWanted

    implicitHeight: content.implicitHeight

    PlainButton {
        id: content

        anchors.fill: parent
        padding: 22
        radius: 12
        ground: Ink.sheet
        enabled: cell.openable
        focus: cell.openable
        focusPolicy: cell.reached ? Qt.StrongFocus : Qt.ClickFocus
        Accessible.name: cell.title !== "" ? cell.title : cell.card.title
        Accessible.description: cell.body
        onClicked: cell.opened()

        contentItem: ColumnLayout {
            spacing: 14

            TextLabel {
                Layout.fillWidth: true
                Layout.rightMargin: 24
                text: cell.title
                wrapMode: Text.Wrap
                font: Fonts.face.archivo(24, 700)
                color: Ink.paperInk
                Accessible.ignored: true
            }

            WallCaseText {
                Layout.fillWidth: true
                Layout.fillHeight: true
                text: cell.body

                // The text can be selected with the mouse, and is still part of the button.
                TapHandler {
                    enabled: cell.openable
                    onTapped: content.clicked()
                }
            }
        }
    }

    IconButton {
        x: parent.width - width - 10
        y: 12
        symbol: "trash"
        tint: Ink.paperInk
        help: cell.store.words.text("removeFromWall")
        enabled: cell.removable
        opacity: enabled ? 1 : 0.42
        focus: !cell.openable
        focusPolicy: content.focusPolicy
        Accessible.description: content.Accessible.name
        onClicked: cell.removalWanted()
    }
}
