pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// What the account has pinned. The arrow keys go from row to row; only the rows on display are made.
Item {
    id: view

    required property AppStore store
    readonly property real columnWidth: Math.min(1000, list.width - 68)

    // The item that the removal dialog is about.
    property string removing

    clip: true

    WallModel {
        id: model

        store: view.store
        columns: Math.floor((view.columnWidth + 18) / (265 + 18))
    }

    WallHeader {
        id: header

        // Over the list and not in it: of the origin the list does not tell every change.
        y: list.originY - list.contentY - height
        z: 1
        width: list.width
        height: implicitHeight
        store: view.store
        model: model
        columnWidth: view.columnWidth
        onActiveFocusChanged: {
            if (activeFocus)
                list.goToTop();
        }
        onPassed: {
            list.currentIndex = Math.max(0, list.currentIndex);
            if (list.currentItem)
                list.currentItem.forceActiveFocus(Qt.TabFocusReason);
        }
    }

    ListView {
        id: list

        function goToTop() {
            contentY = originY - topMargin;
        }

        anchors.fill: parent
        topMargin: header.height
        bottomMargin: footer.height
        // A header that has become higher is still seen from its beginning.
        onTopMarginChanged: {
            if (contentY <= originY)
                goToTop();
        }
        model: model.rows
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        // The row with the keyboard brings itself into view; a change of the list moves nothing.
        highlightFollowsCurrentItem: false
        Accessible.role: Accessible.List
        Accessible.name: view.store.words.text("wallTitle")

        T.ScrollBar.vertical: ScrollBarLine {}

        delegate: WallRow {
            required property int index

            width: list.width
            store: view.store
            wall: model
            columnWidth: view.columnWidth
            reached: ListView.isCurrentItem
            onCaseOpened: card => {
                overlay.setSource("CaseSheet.qml", {
                    store: view.store,
                    card: card
                });
            }
            onRemovalWanted: id => {
                view.removing = id;
                overlay.setSource("ConfirmDialog.qml", {
                    store: view.store,
                    title: Qt.binding(() => view.store.words.text("removeFromWall"))
                });
            }
            onActiveFocusChanged: {
                if (!activeFocus)
                    return;
                list.currentIndex = index;
                list.positionViewAtIndex(index, ListView.Contain);
            }
        }
    }

    WallFooter {
        id: footer

        y: list.originY + list.contentHeight - list.contentY
        z: 1
        width: list.width
        height: implicitHeight
        store: view.store
        model: model
        columnWidth: view.columnWidth
        onActiveFocusChanged: {
            if (activeFocus)
                list.contentY = list.originY + Math.max(-list.topMargin, list.contentHeight + height - list.height);
        }
    }

    Loader {
        id: overlay

        anchors.fill: parent
    }

    Connections {
        target: overlay.item
        ignoreUnknownSignals: true

        function onConfirmed() {
            model.beginRemove(view.removing);
        }

        function onDismissed() {
            view.removing = "";
            overlay.source = "";
        }
    }
}
