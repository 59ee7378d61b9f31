pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// Two columns: the sidebar chooses among the screens, the detail column holds the chosen one.
T.SplitView {
    id: root

    required property AppStore store

    orientation: Qt.Horizontal

    handle: SplitLine {}

    Sidebar {
        store: root.store
        T.SplitView.minimumWidth: 218
        T.SplitView.preferredWidth: 238
        T.SplitView.maximumWidth: 270
    }

    DetailColumn {
        store: root.store
        T.SplitView.fillWidth: true
    }
}
