pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// Two columns: the sidebar chooses among the screens, the detail column holds the chosen one.
T.SplitView {
    id: root

    required property AppStore store
    property real sidebarWidth: 238

    // Of the window.
    signal menuWanted(control: Item)

    orientation: Qt.Horizontal

    handle: SplitLine {}

    // The view itself sets the preferred width while the user drags.
    Component.onCompleted: sidebar.T.SplitView.preferredWidth = sidebarWidth
    onResizingChanged: {
        if (!resizing)
            sidebarWidth = sidebar.width;
    }

    Sidebar {
        id: sidebar

        store: root.store
        T.SplitView.minimumWidth: 218
        T.SplitView.maximumWidth: 270
        onMenuWanted: control => root.menuWanted(control)
    }

    DetailColumn {
        store: root.store
        T.SplitView.fillWidth: true
    }
}
