pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// The archives besides the flagship.
ColumnLayout {
    id: more

    required property AppStore store

    spacing: 14

    Eyebrow {
        Layout.fillWidth: true
        words: more.store.words.text("moreArchives")
        Accessible.role: Accessible.Heading
    }

    Repeater {
        model: more.store.archives

        delegate: PlainButton {
            id: row

            required property string archiveId
            required property string title
            required property double count

            Layout.fillWidth: true
            visible: archiveId !== "foible"
            padding: 18
            radius: 12
            ground: Ink.paper2
            Accessible.name: title
            Accessible.description: more.store.words.text("archive.sub." + archiveId)
            onClicked: more.store.destination = archiveId

            contentItem: RowLayout {
                spacing: 14

                Rectangle {
                    Layout.alignment: Qt.AlignTop
                    implicitWidth: 10
                    implicitHeight: 42
                    radius: 4
                    color: ArchiveStyle.color(row.archiveId)
                }

                ColumnLayout {
                    Layout.fillWidth: true
                    Layout.alignment: Qt.AlignTop
                    spacing: 6

                    TextLabel {
                        Layout.fillWidth: true
                        text: row.title
                        wrapMode: Text.Wrap
                        font: Fonts.face.archivo(23, 700, 110)
                        Accessible.ignored: true
                    }

                    TextLabel {
                        Layout.fillWidth: true
                        text: more.store.words.text("archive.sub." + row.archiveId)
                        wrapMode: Text.Wrap
                        font: Fonts.face.reading(17)
                        leading: 3
                        color: Ink.dim
                        Accessible.ignored: true
                    }
                }

                TextLabel {
                    Layout.alignment: Qt.AlignTop
                    Layout.topMargin: 7
                    text: more.store.words.number(row.count)
                    font: Fonts.face.mono(Fonts.caption)
                    Accessible.ignored: true
                }
            }
        }
    }
}
