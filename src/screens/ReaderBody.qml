pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

// The case below its header.
Column {
    id: page

    required property AppStore store
    required property CaseReaderModel model
    required property TextSelection selection
    required property TextSizing sizing

    signal sectionChosen(section: Item)
    signal relatedChosen(card: caseCard)

    spacing: 28

    Column {
        width: parent.width
        visible: page.model.tradeOut !== ""
        spacing: 12

        Rectangle {
            width: parent.width
            height: 2
            color: Ink.paperInk
        }

        SelectableText {
            width: parent.width
            selection: page.selection
            text: page.model.tradeOut
            font: Fonts.face.archivo(27, 650, 90)
        }
    }

    SelectableText {
        width: parent.width
        visible: text !== ""
        selection: page.selection
        text: page.model.relevance
        font: Fonts.face.reading(page.sizing.size)
        leading: 6
    }

    ContentsMenu {
        visible: page.model.hasSections
        store: page.store
        model: page.model
        onChosen: index => page.sectionChosen(sections.itemAt(index))
    }

    Repeater {
        id: sections

        model: page.model.sections

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
