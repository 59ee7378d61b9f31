pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// A row under a rule that leads somewhere else.
PlainButton {
    id: row

    required property string title
    required property string symbol
    property font face
    property real leading: 0

    overSheet: true
    radius: 4
    Accessible.name: title

    contentItem: RowLayout {
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

    Rectangle {
        width: parent.width
        height: 1
        color: Ink.paperLine
    }
}
