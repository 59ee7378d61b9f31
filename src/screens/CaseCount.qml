pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// How many cases there are, and the way to the next of them.
RowLayout {
    id: row

    required property AppStore store
    required property CaseBrowserModel model
    readonly property string words: store.words.number(model.total) + " "
                                    + store.words.text(model.total === 1 ? "columnCase" : "columnCases")

    spacing: 10

    TextLabel {
        Layout.fillWidth: true
        Layout.minimumHeight: more.implicitHeight
        text: row.words
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        font: Fonts.face.mono(Fonts.label)
        color: Ink.mute
        Accessible.role: Accessible.StatusBar
    }

    Spinner {
        visible: row.model.loadingMore
        size: 12
        label: row.store.words.text("more")
    }

    BrandButton {
        id: more

        topPadding: 7
        bottomPadding: 7
        leftPadding: 12
        rightPadding: 12
        visible: row.model.hasMore
        enabled: row.model.showing !== CaseBrowserModel.Loading && !row.model.loadingMore
        text: row.store.words.text("more")
        onClicked: row.model.beginMore()
    }
}
