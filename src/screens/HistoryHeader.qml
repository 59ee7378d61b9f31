pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// What stands over the conversations.
FocusScope {
    id: header

    required property AppStore store
    required property HistoryModel model
    required property real columnWidth

    signal passed

    implicitHeight: column.implicitHeight + 34

    ColumnLayout {
        id: column

        x: (header.width - width) / 2
        y: 34
        width: header.columnWidth
        spacing: 24

        RowLayout {
            Layout.fillWidth: true
            spacing: 16

            TextLabel {
                Layout.fillWidth: true
                text: header.store.words.text("wallConversations")
                wrapMode: Text.Wrap
                font: Fonts.face.archivo(48, 800, 70)
                Accessible.role: Accessible.Heading
            }

            BrandButton {
                filled: true
                symbol: "plus"
                text: header.store.words.text("chat.new")
                onClicked: header.store.newChat()
            }
        }

        SearchEntry {
            Layout.fillWidth: true
            focus: true
            title: header.store.words.text("searchLibrary")
            clearLabel: header.store.words.text("clearSearch")
            symbol: ""
            padding: 14
            font: Fonts.face.field(19)
            text: header.model.query
            onTextChanged: header.model.query = text
            onPassed: header.passed()
        }

        EmptyState {
            Layout.fillWidth: true
            Layout.preferredHeight: 300
            visible: header.model.empty
            symbol: "bubble.left.and.bubble.right"
            title: header.store.words.text("emptyHistory")
        }
    }
}
