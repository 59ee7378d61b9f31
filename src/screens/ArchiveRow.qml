pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// A row of the sidebar that opens one archive.
SidebarRow {
    id: row

    required property string archiveId
    required property string title

    target: archiveId
    Accessible.name: title

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
