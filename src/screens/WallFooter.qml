pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// What stands under the pinned things, or in their place.
FocusScope {
    id: footer

    required property AppStore store
    required property WallModel model
    required property real columnWidth

    implicitHeight: store.signedIn ? column.implicitHeight + 28 + 34 : 34

    ColumnLayout {
        id: column

        x: (footer.width - width) / 2
        y: 28
        width: footer.columnWidth
        visible: footer.store.signedIn
        spacing: 28

        EmptyState {
            Layout.fillWidth: true
            Layout.preferredHeight: 300
            visible: footer.model.empty && !footer.store.wallLoading
            symbol: "rectangle.grid.2x2"
            title: footer.store.words.text("emptyLibrary")
            detail: footer.store.words.text("chooseCaseBody")
        }

        BrandButton {
            visible: footer.model.savedEarlier
            focus: true
            symbol: "archivebox"
            text: footer.store.words.text("earlierSaved")
            onClicked: footer.store.destination = "saved"
        }
    }
}
