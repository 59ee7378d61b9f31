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

    spacing: 10

    Text {
        Layout.fillWidth: true
        Layout.minimumHeight: more.implicitHeight
        text: row.store.words.number(row.model.total) + " "
              + row.store.words.text(row.model.total === 1 ? "columnCase" : "columnCases")
        textFormat: Text.PlainText
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        font: Fonts.face.mono(Fonts.label)
        color: Ink.mute
        // Told by a screen reader when it changes. A label of the toolkit would keep its own role.
        Accessible.role: Accessible.StatusBar
        Accessible.name: text
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
