pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// A case over another screen. It is there from the moment it is made; whoever made it drops it once
// it is dismissed.
Sheet {
    id: sheet

    required property AppStore store
    required property caseCard card

    signal dismissed
    // A question about the case goes to the chat: other sheets below this one are done, too.
    signal asked

    width: parent ? Math.min(900, parent.width - 32) : 900
    height: parent ? Math.min(800, parent.height - 32) : 800
    title: card.title
    onClosed: dismissed()

    contentItem: FocusScope {
        focus: true

        ColumnLayout {
            anchors.fill: parent
            spacing: 0

            RowLayout {
                Layout.fillWidth: true
                Layout.margins: 18

                Eyebrow {
                    Layout.fillWidth: true
                    words: ArchiveStyle.domain(sheet.card.archive)
                }

                BrandButton {
                    text: sheet.store.words.text("close")
                    onClicked: sheet.close()
                }
            }

            CaseReaderView {
                Layout.fillWidth: true
                Layout.fillHeight: true
                focus: true
                radius: 13
                store: sheet.store
                card: sheet.card
                onAsked: {
                    sheet.asked();
                    sheet.close();
                }
            }
        }
    }
}
