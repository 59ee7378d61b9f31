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
        id: heading

        width: parent.width
        bottomPadding: 12
        text: list.store.words.text("sources")
        font: Fonts.face.archivo(24, 700)
        color: Ink.paperInk
        Accessible.role: Accessible.Heading
    }

    Column {
        width: parent.width
        spacing: 12
        Accessible.role: Accessible.List
        Accessible.name: heading.text

        Repeater {
            model: list.model.sources

            delegate: PlainLink {
                id: source

                required property string title
                required property string address

                width: list.width
                height: row.implicitHeight
                outside: 12
                name: title
                onClicked: list.store.openAddress(address)

                ReaderRow {
                    id: row

                    width: parent.width
                    title: source.title
                    symbol: "arrow.up.right"
                    face: Fonts.face.reading(list.store.readingSize - 1)
                    padding: 12
                    leading: 3
                }
            }
        }
    }
}
