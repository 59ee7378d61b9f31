pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// The first screen: the flagship archive, its newest cases, the other archives, and the way into the
// chat.
Item {
    id: home

    required property AppStore store
    readonly property real leadCount: store.lead.count

    HomeModel {
        id: model

        store: home.store
    }

    ScrollPage {
        id: scroll

        anchors.fill: parent
        contentHeight: content.implicitHeight + 68

        ColumnLayout {
            id: content

            x: (scroll.width - width) / 2
            y: 34
            width: Math.min(1100, scroll.width - 68)
            spacing: 28

            RowLayout {
                Layout.fillWidth: true
                spacing: 10

                Eyebrow {
                    Layout.alignment: Qt.AlignBaseline
                    Layout.fillWidth: true
                    words: home.store.words.text("archivesGrowing")
                    Accessible.role: Accessible.Heading
                }

                TextLabel {
                    Layout.alignment: Qt.AlignBaseline
                    text: home.store.words.number(home.store.connected ? home.store.health.total
                                                                       : home.store.archiveTotal)
                    font: Fonts.face.archivo(26, 750, 62)
                }

                Eyebrow {
                    Layout.alignment: Qt.AlignBaseline
                    words: home.store.words.text("columnCases")
                }
            }

            LeadPanel {
                Layout.fillWidth: true
                store: home.store
                count: home.leadCount
            }

            RowLayout {
                Layout.fillWidth: true
                spacing: 24

                NewestCases {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    Layout.alignment: Qt.AlignTop
                    store: home.store
                    model: model
                    onChosen: card => {
                        sheet.setSource("CaseSheet.qml", {
                            store: home.store,
                            card: card
                        });
                        sheet.active = true;
                    }
                }

                MoreArchives {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    Layout.alignment: Qt.AlignTop
                    store: home.store
                }
            }

            AskPanel {
                Layout.fillWidth: true
                store: home.store
                count: home.leadCount
            }
        }
    }

    Loader {
        id: sheet

        active: false
    }

    Connections {
        target: sheet.item
        ignoreUnknownSignals: true

        function onDismissed() {
            sheet.active = false;
        }
    }
}
