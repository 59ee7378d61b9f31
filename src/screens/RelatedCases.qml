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
        width: parent.width
        bottomPadding: 14
        text: list.store.words.text("relatedCases")
        font: Fonts.face.archivo(24, 700)
        color: Ink.paperInk
        Accessible.role: Accessible.Heading
    }

    Repeater {
        model: list.model.related

        delegate: ReaderRow {
            required property caseCard card

            width: list.width
            verticalPadding: 13
            symbol: "chevron.right"
            face: Fonts.face.archivo(20, 600)
            onClicked: list.chosen(card)
        }
    }
}
