pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// The case below its header.
Column {
    id: body

    required property AppStore store
    required property CaseReaderModel model
    required property TextSelection selection

    signal sectionChosen(section: Item)
    signal relatedChosen(card: caseCard)

    spacing: 28

    Column {
        width: parent.width
        visible: body.model.tradeOut !== ""
        spacing: 12

        Rectangle {
            width: parent.width
            height: 2
            color: Ink.paperInk
        }

        SelectableText {
            width: parent.width
            selection: body.selection
            text: body.model.tradeOut
            font: Fonts.face.archivo(27, 650, 90)
        }
    }

    SelectableText {
        width: parent.width
        visible: text !== ""
        selection: body.selection
        text: body.model.relevance
        font: Fonts.face.reading(body.store.readingSize)
        leading: 6
    }

    ContentsMenu {
        visible: body.model.hasSections
        store: body.store
        model: body.model
        onChosen: index => body.sectionChosen(sections.itemAt(index))
    }

    Repeater {
        id: sections

        model: body.model.sections

        delegate: ReaderSection {
            width: body.width
            store: body.store
            selection: body.selection
        }
    }

    HeroLink {
        width: parent.width
        visible: body.model.heroAddress !== ""
        store: body.store
        model: body.model
    }

    SourceList {
        width: parent.width
        store: body.store
        model: body.model
    }

    RelatedCases {
        width: parent.width
        visible: body.model.hasRelated
        store: body.store
        model: body.model
        onChosen: card => body.relatedChosen(card)
    }

    BrandButton {
        filled: true
        onSheet: true
        symbol: "bubble.left.and.bubble.right"
        text: body.store.words.text("askHead")
        onClicked: body.model.ask()
    }
}
