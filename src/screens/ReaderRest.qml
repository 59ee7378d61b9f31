pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

// The case below what fills the first view.
Column {
    id: page

    required property AppStore store
    required property CaseReaderModel model
    required property TextSelection selection
    required property TextSizing sizing

    signal relatedChosen(card: caseCard)

    // Of all sections of the case; null for one further up.
    function sectionAt(index: int): Item {
        return sections.itemAt(index - model.firstSections.rowCount());
    }

    spacing: 28

    Repeater {
        id: sections

        model: page.model.laterSections

        delegate: ReaderSection {
            width: page.width
            selection: page.selection
            sizing: page.sizing
        }
    }

    HeroLink {
        width: parent.width
        visible: page.model.heroAddress !== ""
        store: page.store
        model: page.model
    }

    SourceList {
        width: parent.width
        store: page.store
        model: page.model
    }

    RelatedCases {
        width: parent.width
        visible: page.model.hasRelated
        store: page.store
        model: page.model
        onChosen: card => page.relatedChosen(card)
    }

    BrandButton {
        filled: true
        overSheet: true
        symbol: "bubble.left.and.bubble.right"
        text: page.store.words.text("askHead")
        onClicked: page.model.ask()
    }
}
