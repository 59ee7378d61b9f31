pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// Search and filters with what they let through at the left, the chosen case at the right.
T.SplitView {
    id: browser

    required property AppStore store

    orientation: Qt.Horizontal

    handle: SplitLine {}

    CaseBrowserModel {
        id: model

        store: browser.store
    }

    CaseListColumn {
        id: list

        store: browser.store
        model: model
        T.SplitView.minimumWidth: 280
        T.SplitView.preferredWidth: 350
        // The reader keeps its width in a narrow window.
        T.SplitView.maximumWidth: Math.max(280, Math.min(440, browser.width - 411))
    }

    CaseReaderPane {
        store: browser.store
        card: model.selectedCard
        T.SplitView.minimumWidth: 410
        T.SplitView.fillWidth: true
    }

    Shortcut {
        sequence: "Ctrl+F"
        enabled: browser.enabled
        onActivated: list.searchFor()
    }
}
