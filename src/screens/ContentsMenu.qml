pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

// Leads to a section of the case.
ReaderControl {
    id: contents

    required property AppStore store
    required property CaseReaderModel model

    signal chosen(index: int)

    symbol: "list.bullet"
    text: store.words.text("contents")
    onClicked: {
        rows.active = true;
        menu.open();
    }

    MenuPanel {
        id: menu

        width: 320

        Instantiator {
            id: rows

            active: false
            model: contents.model.contents

            delegate: MenuRow {
                required property int index
                required property string modelData

                text: modelData
                onTriggered: contents.chosen(index)
            }

            onObjectAdded: (index, row) => menu.insertItem(index, row as MenuRow)
            onObjectRemoved: (index, row) => menu.removeItem(row as MenuRow)
        }
    }
}
