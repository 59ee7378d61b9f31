pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

// Cases to go on with.
Column {
    id: list

    required property AppStore store
    required property CaseReaderModel model

    signal chosen(card: caseCard)

    TextLabel {
        id: heading

        width: parent.width
        bottomPadding: 14
        text: list.store.words.text("relatedCases")
        font: Fonts.face.archivo(24, 700)
        color: Ink.paperInk
        Accessible.role: Accessible.Heading
    }

    Column {
        width: parent.width
        spacing: 14
        Accessible.role: Accessible.List
        Accessible.name: heading.text

        Repeater {
            model: list.model.related

            delegate: PlainButton {
                id: row

                required property string title
                required property caseCard card

                width: list.width
                leftInset: -12
                rightInset: -12
                overSheet: true
                radius: 4
                Accessible.name: title
                onClicked: list.chosen(card)

                contentItem: ReaderRow {
                    title: row.title
                    symbol: "chevron.right"
                    face: Fonts.face.archivo(20, 600)
                    padding: 13
                }
            }
        }
    }
}
