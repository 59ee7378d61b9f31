pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// The conversations of the library. The arrow keys go from one to the next; only the rows on display
// are made.
Item {
    id: history

    required property AppStore store
    readonly property real columnWidth: Math.min(950, list.width - 68)

    // The conversations that the dialogs are about.
    property string renaming
    property string removing

    clip: true

    HistoryModel {
        id: model

        store: history.store
    }

    HistoryHeader {
        id: header

        // Over the list and not in it: of the origin the list does not tell every change.
        y: list.originY - list.contentY - height
        z: 1
        width: list.width
        height: implicitHeight
        store: history.store
        model: model
        columnWidth: history.columnWidth
        onActiveFocusChanged: {
            if (activeFocus)
                list.goToTop();
        }
        onHeightChanged: {
            if (list.contentY <= list.originY)
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

        // The margin is not yet that of a header which has just become higher.
        function goToTop() {
            contentY = originY - header.height;
        }

        anchors.fill: parent
        topMargin: header.height
        bottomMargin: 34
        model: model.conversations
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        // The row with the keyboard brings itself into view; a change of the list moves nothing.
        highlightFollowsCurrentItem: false
        Accessible.role: Accessible.List
        Accessible.name: history.store.words.text("wallConversations")

        T.ScrollBar.vertical: ScrollBarLine {}

        delegate: ConversationRow {
            id: row

            required property int index

            width: list.width
            store: history.store
            columnWidth: history.columnWidth
            reached: ListView.isCurrentItem
            onOpened: model.open(conversationId)
            onRenameWanted: {
                history.renaming = conversationId;
                dialog.setSource("RenameDialog.qml", {
                    store: history.store,
                    name: title
                });
            }
            onRemovalWanted: {
                history.removing = conversationId;
                dialog.setSource("ConfirmDialog.qml", {
                    store: history.store,
                    title: Qt.binding(() => history.store.words.text("deleteConfirm"))
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

    Loader {
        id: dialog
    }

    Connections {
        target: dialog.item
        ignoreUnknownSignals: true

        function onNamed(name: string) {
            model.rename(history.renaming, name);
        }

        function onConfirmed() {
            model.remove(history.removing);
        }

        function onDismissed() {
            history.renaming = "";
            history.removing = "";
            dialog.source = "";
        }
    }
}
