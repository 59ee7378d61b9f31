pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// What a help tip shows.
Item {
    id: panel

    required property string words

    T.ToolTip {
        id: tip

        x: parent ? (parent.width - width) / 2 : 0
        y: parent ? parent.height + 6 : 0
        implicitWidth: implicitContentWidth + leftPadding + rightPadding
        implicitHeight: implicitContentHeight + topPadding + bottomPadding
        horizontalPadding: 10
        verticalPadding: 6
        margins: 6
        delay: 600
        visible: true
        text: panel.words

        contentItem: TextLabel {
            text: tip.text
            font: Fonts.face.mono(Fonts.label)
            Accessible.ignored: true
        }

        background: Rectangle {
            radius: 6
            // A line parts it from a sheet, which is light in both appearances.
            color: Ink.paper2
            border.color: Ink.lineStrong
        }
    }
}
