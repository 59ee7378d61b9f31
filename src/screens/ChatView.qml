pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// The open conversation, and the place to ask.
Item {
    id: view

    required property AppStore store
    readonly property real frame: Math.min(900, width)
    readonly property real inset: (width - frame) / 2 + 28
    readonly property real frameWidth: frame - 56

    Component.onCompleted: store.beginRefreshQuota()
    Keys.onPressed: event => {
        if (event.key !== Qt.Key_PageUp && event.key !== Qt.Key_PageDown)
            return;
        thread.turn(event.key === Qt.Key_PageDown ? 1 : -1);
        event.accepted = true;
    }

    AnswerAnnouncement {
        id: announcement

        store: view.store
    }

    Announcement {
        words: announcement.words
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        ChatHeader {
            Layout.fillWidth: true
            Layout.leftMargin: view.inset
            Layout.rightMargin: view.inset
            Layout.topMargin: 24
            Layout.bottomMargin: 16
            store: view.store
        }

        Rectangle {
            Layout.fillWidth: true
            Layout.leftMargin: view.inset - 28
            Layout.rightMargin: view.inset - 28
            implicitHeight: 1
            color: Ink.line
        }

        MessageThread {
            id: thread

            Layout.fillWidth: true
            Layout.fillHeight: true
            store: view.store
            inset: view.inset
            textWidth: Math.min(820, view.frameWidth)
            onChosen: card => {
                sheet.setSource("CaseSheet.qml", {
                    store: view.store,
                    card: card
                });
                sheet.active = true;
            }
            onPicked: question => composer.compose(question)
            onStopped: announcement.stop()
        }

        Composer {
            id: composer

            Layout.fillWidth: true
            Layout.leftMargin: view.inset
            Layout.rightMargin: view.inset
            Layout.topMargin: 12
            Layout.bottomMargin: 20
            store: view.store
            covered: sheet.active
        }
    }

    Loader {
        id: sheet

        anchors.fill: parent
        active: false
    }

    Connections {
        target: sheet.item
        ignoreUnknownSignals: true

        function onDismissed() {
            sheet.active = false;
        }
    }
}
