pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// What a row says that leads somewhere else, under a rule.
Item {
    id: row

    required property string title
    required property string symbol
    required property font face
    required property real padding
    property real leading: 0

    implicitHeight: words.implicitHeight + 2 * padding

    Rectangle {
        width: parent.width
        height: 1
        color: Ink.paperLine
    }

    RowLayout {
        id: words

        y: row.padding
        width: row.width
        spacing: 15

        TextLabel {
            Layout.fillWidth: true
            text: row.title
            wrapMode: Text.Wrap
            font: row.face
            leading: row.leading
            color: Ink.paperInk
            Accessible.ignored: true
        }

        Symbol {
            name: row.symbol
            size: 18
            color: Ink.paperInk
        }
    }
}
