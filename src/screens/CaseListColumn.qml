pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// The left column of the browser: what is asked for, what was found, how many.
Rectangle {
    id: column

    required property AppStore store
    required property CaseBrowserModel model

    function searchFor() {
        header.takeFocus();
    }

    color: Ink.paper0

    Announcement {
        words: {
            switch (column.model.showing) {
            case CaseBrowserModel.Cards:
                return count.words;
            case CaseBrowserModel.Nothing:
                return nothing.title;
            case CaseBrowserModel.Failed:
                return failure.text;
            }
            return "";
        }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        CaseSearchHeader {
            id: header

            Layout.fillWidth: true
            Layout.margins: 22
            store: column.store
            model: column.model
            onPassed: cases.takeFocus()
        }

        Rectangle {
            Layout.fillWidth: true
            implicitHeight: 1
            color: Ink.line
        }

        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true

            // Around the list, since the toolkit must not end a list that is itself hidden while a screen
            // reader follows it.
            Item {
                anchors.fill: parent
                visible: column.model.showing === CaseBrowserModel.Cards

                CaseList {
                    id: cases

                    anchors.fill: parent
                    browser: column.model
                }
            }

            Spinner {
                anchors.centerIn: parent
                visible: column.model.showing === CaseBrowserModel.Loading
                label: column.model.title
            }

            EmptyState {
                id: nothing

                anchors.fill: parent
                visible: column.model.showing === CaseBrowserModel.Nothing
                symbol: column.model.saved ? "bookmark" : "magnifyingglass"
                title: column.store.words.text(column.model.saved ? "emptyLibrary" : "browseEmpty")
            }

            ColumnLayout {
                anchors.centerIn: parent
                width: parent.width - 48
                visible: column.model.showing === CaseBrowserModel.Failed
                spacing: 16

                TextLabel {
                    id: failure

                    Layout.fillWidth: true
                    text: column.store.words.text("loadFailed")
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignHCenter
                    font: Fonts.face.reading(18)
                    leading: 3
                }

                BrandButton {
                    Layout.alignment: Qt.AlignHCenter
                    text: column.store.words.text("retry")
                    onClicked: column.model.beginSearch()
                }
            }
        }

        Rectangle {
            Layout.fillWidth: true
            implicitHeight: 1
            color: Ink.line
        }

        CaseCount {
            id: count

            Layout.fillWidth: true
            Layout.margins: 16
            store: column.store
            model: column.model
        }
    }
}
