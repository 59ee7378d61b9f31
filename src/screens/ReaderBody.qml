pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

// The case below its header, as much of it as fills the first view.
Column {
    id: page

    required property AppStore store
    required property CaseReaderModel model
    required property TextSelection selection
    required property TextSizing sizing

    signal sectionChosen(index: int)

    // Null for one further down.
    function sectionAt(index: int): Item {
        return sections.itemAt(index);
    }

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
        visible: page.model.contents.length > 0
        store: page.store
        model: page.model
        onChosen: index => page.sectionChosen(index)
    }

    Repeater {
        id: sections

        model: page.model.firstSections

        delegate: ReaderSection {
            width: page.width
            selection: page.selection
            sizing: page.sizing
        }
    }
}
