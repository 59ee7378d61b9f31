pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// A row of the sidebar that opens one archive.
PlainButton {
    id: row

    required property AppStore store
    required property string archiveId
    required property string title

    Layout.fillWidth: true
    padding: 12
    checkable: true
    marked: store.destination === archiveId
    ground: marked ? Ink.paper2 : "transparent"
    Accessible.name: title
    onClicked: store.destination = archiveId

    contentItem: RowLayout {
        spacing: 10

        Rectangle {
            implicitWidth: 8
            implicitHeight: 22
            radius: 3
            color: ArchiveStyle.color(row.archiveId)
        }

        TextLabel {
            Layout.fillWidth: true
            text: row.title
            elide: Text.ElideRight
            font: Fonts.face.archivo(16, 650, 95)
            Accessible.ignored: true
        }
    }
}
