pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// A case of the list. A hundred thousand of them pass by, so it is made of little: bare texts, which
// a screen reader does not see, since the row itself says what they say.
T.ItemDelegate {
    id: row

    required property int index
    required property string key
    required property string archive
    required property string title
    required property string summary
    required property string era
    property bool chosen: false
    // The keyboard is at this row.
    property bool marked: false

    // By whatever means.
    signal opened

    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 20
    bottomPadding: 21
    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    Accessible.name: title
    Accessible.description: summary
    Accessible.selectable: true
    Accessible.selected: chosen
    Accessible.onPressAction: opened()
    Keys.onReturnPressed: opened()
    Keys.onEnterPressed: opened()
    Keys.onSpacePressed: opened()

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }

    contentItem: Column {
        spacing: 10

        CaseOrigin {
            width: parent.width
            archive: row.archive
            era: row.era
        }

        Text {
            width: parent.width
            text: row.title
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            maximumLineCount: 3
            elide: Text.ElideRight
            font: Fonts.face.archivo(22, 650, 82)
            color: Ink.paper
        }

        Text {
            width: parent.width
            text: row.summary
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            maximumLineCount: 2
            elide: Text.ElideRight
            font: Fonts.face.reading(16)
            lineHeight: 1 + 3 / Fonts.face.lineHeight(font, 0)
            color: Ink.dim
        }
    }

    background: Rectangle {
        color: row.chosen ? Ink.paper2 : "transparent"

        Rectangle {
            anchors.fill: parent
            color: Ink.paper
            opacity: row.hovered && !row.chosen ? 0.04 : 0
        }

        Rectangle {
            width: 3
            height: parent.height
            visible: row.chosen
            color: ArchiveStyle.color(row.archive)
        }

        Rectangle {
            x: 20
            y: parent.height - 1
            width: parent.width - 40
            height: 1
            color: Ink.line
        }

        Rectangle {
            anchors.fill: parent
            anchors.margins: 3
            radius: 7
            visible: row.marked
            color: "transparent"
            border.color: Ink.brand
            border.width: 2
        }
    }
}
