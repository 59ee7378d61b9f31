pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

// The right side of the browser: the chosen case, read afresh only when it is another one.
Item {
    id: pane

    required property AppStore store
    required property caseCard card
    readonly property string shownKey: card.key

    function show() {
        if (shownKey === "")
            reader.source = "";
        else
            reader.setSource("CaseReaderView.qml", {
                store: store,
                card: card
            });
    }

    onShownKeyChanged: show()

    EmptyState {
        anchors.fill: parent
        visible: pane.shownKey === ""
        symbol: "doc.text"
        title: pane.store.words.text("chooseCase")
        detail: pane.store.words.text("chooseCaseBody")
    }

    Loader {
        id: reader

        anchors.fill: parent
    }
}
