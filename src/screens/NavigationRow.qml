pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// A row of the sidebar that opens one screen.
SidebarRow {
    id: row

    required property string symbol
    required property string words
    property int count: 0

    Accessible.name: count > 0 ? words + ", " + store.words.number(count) : words

    contentItem: RowLayout {
        spacing: 12

        Item {
            implicitWidth: 20
            implicitHeight: 20

            Symbol {
                anchors.centerIn: parent
                name: row.symbol
                size: 18
            }
        }

        TextLabel {
            Layout.fillWidth: true
            text: row.words
            elide: Text.ElideRight
            font: Fonts.face.archivo(16, 600)
            Accessible.ignored: true
        }

        TextLabel {
            visible: row.count > 0
            text: row.store.words.number(row.count)
            font: Fonts.face.mono(Fonts.label)
            color: Ink.mute
            Accessible.ignored: true
        }
    }
}
