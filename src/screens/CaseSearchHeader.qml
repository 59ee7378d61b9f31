pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// What is browsed, the search text and the filters.
ColumnLayout {
    id: header

    required property AppStore store
    required property CaseBrowserModel model
    readonly property string searchWords: store.words.text("archive.search." + (model.archive || "foible"))

    signal passed

    function takeFocus() {
        search.takeFocus();
    }

    spacing: 18

    RowLayout {
        Layout.fillWidth: true

        Eyebrow {
            Layout.fillWidth: true
            words: header.store.words.text("browseTitle")
            elide: Text.ElideRight
        }

        IconButton {
            // Its room to press takes none of the layout.
            Layout.margins: -7
            symbol: "magnifyingglass"
            size: 16
            tint: Ink.mute
            help: header.store.words.text("archive.search.foible")
            onClicked: header.takeFocus()
        }
    }

    RowLayout {
        Layout.fillWidth: true
        spacing: 12

        Rectangle {
            Layout.alignment: Qt.AlignTop
            visible: header.model.archive !== ""
            implicitWidth: 10
            implicitHeight: 32
            radius: 4
            color: ArchiveStyle.color(header.model.archive)
        }

        TextLabel {
            Layout.fillWidth: true
            Layout.alignment: Qt.AlignTop
            text: header.model.title
            wrapMode: Text.Wrap
            font: Fonts.face.archivo(29, 800, 88)
            Accessible.role: Accessible.Heading
        }
    }

    TextLabel {
        Layout.fillWidth: true
        visible: header.model.archive !== ""
        text: visible ? header.store.words.text("archive.sub." + header.model.archive) : ""
        wrapMode: Text.Wrap
        font: Fonts.face.reading(17)
        leading: 3
        color: Ink.dim
    }

    SearchEntry {
        id: search

        Layout.fillWidth: true
        objectName: "case-search"
        title: header.searchWords
        clearLabel: header.store.words.text("clearSearch")
        onTextChanged: header.model.text = text
        onPassed: header.passed()
    }

    ColumnLayout {
        Layout.fillWidth: true
        visible: !header.model.saved
        spacing: 10

        FilterPicker {
            Layout.fillWidth: true
            filter: header.model.category
            title: header.store.words.text("categories")
        }

        RowLayout {
            Layout.fillWidth: true
            spacing: 10

            FilterPicker {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                filter: header.model.decade
                title: header.store.words.text("years")
            }

            FilterPicker {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                filter: header.model.sort
                title: header.store.words.text("sort")
            }
        }

        FilterPicker {
            Layout.fillWidth: true
            visible: header.model.year.hasChoice
            filter: header.model.year
            title: header.store.words.text("exactYear")
        }

        ArchiveMenu {
            Layout.fillWidth: true
            visible: header.model.archive === ""
            store: header.store
            model: header.model
        }
    }
}
