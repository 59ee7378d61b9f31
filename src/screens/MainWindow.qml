import QtQuick
import Quillmere.Presentation

Window {
    id: window

    required property AppStore store

    signal anotherWindowWanted

    width: 1320
    height: 880
    minimumWidth: 980
    minimumHeight: 680
    visible: true
    title: "Quillmere.Chat"
    color: Ink.paper0

    RootView {
        anchors.fill: parent
        store: window.store
        enabled: !alert.active
    }

    Loader {
        id: alert

        anchors.fill: parent
        active: window.store.notice !== ""

        sourceComponent: NoticeAlert {
            store: window.store
        }
    }

    Shortcut {
        sequence: "Ctrl+Shift+N"
        onActivated: window.store.newChat()
    }

    Shortcut {
        sequences: [StandardKey.New]
        onActivated: window.anotherWindowWanted()
    }

    Shortcut {
        sequences: [StandardKey.Close]
        onActivated: window.close()
    }

    Shortcut {
        sequences: [StandardKey.Quit]
        onActivated: Qt.quit()
    }

    Component.onCompleted: store.beginConnect()
}
