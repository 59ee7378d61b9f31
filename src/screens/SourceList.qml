pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

// What the case rests on.
Column {
    id: list

    required property AppStore store
    required property CaseReaderModel model

    TextLabel {
        width: parent.width
        bottomPadding: 12
        text: list.store.words.text("sources")
        font: Fonts.face.archivo(24, 700)
        color: Ink.paperInk
        Accessible.role: Accessible.Heading
    }

    Repeater {
        model: list.model.sources

        delegate: ReaderRow {
            required property string address

            width: list.width
            verticalPadding: 12
            symbol: "arrow.up.right"
            face: Fonts.face.reading(list.store.readingSize - 1)
            leading: 4
            Accessible.role: Accessible.Link
            onClicked: list.store.openAddress(address)
        }
    }
}
