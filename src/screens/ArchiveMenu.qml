pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// Limits a search of all archives to some of them.
PlainButton {
    id: button

    required property AppStore store
    required property CaseBrowserModel model
    readonly property string words: model.archives.all ? store.words.text("allArchives")
                                                       : model.archives.names

    topPadding: 6
    bottomPadding: 6
    leftPadding: 10
    rightPadding: 10
    radius: 7
    Accessible.name: words
    onClicked: menu.open()

    contentItem: RowLayout {
        spacing: 10

        Symbol {
            name: "line.3.horizontal.decrease"
            size: 16
            color: Ink.dim
        }

        TextLabel {
            Layout.fillWidth: true
            text: button.words
            elide: Text.ElideRight
            font: Fonts.face.mono(Fonts.label)
            color: button.model.archives.all ? Ink.dim : Ink.paper
            Accessible.ignored: true
        }
    }

    MenuPanel {
        id: menu

        MenuRow {
            indented: true
            text: button.store.words.text("allArchives")
            onTriggered: button.model.searchAllArchives()
        }

        Repeater {
            model: ArchiveStyle.ids

            delegate: MenuRow {
                required property string modelData

                text: ArchiveStyle.domain(modelData)
                checkable: true
                checked: button.model.archives.contains(modelData)
                onTriggered: button.model.limitToArchive(modelData, checked)
            }
        }
    }
}
