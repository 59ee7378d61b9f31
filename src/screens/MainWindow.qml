pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

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
        Component.onCompleted: setSource("NoticeAlert.qml", {
            store: window.store
        })
    }

    Shortcut {
        sequence: "Ctrl+Shift+N"
        onActivated: window.store.newChat()
    }

    Shortcut {
        sequence: "Ctrl+N"
        onActivated: window.anotherWindowWanted()
    }

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: window.close()
    }

    Shortcut {
        sequence: "Ctrl+Q"
        onActivated: Qt.quit()
    }

    // The keyring and the network wait until the window can be seen.
    Connections {
        id: firstFrame

        target: window

        function onFrameSwapped() {
            firstFrame.enabled = false;
            window.store.beginConnect();
        }
    }
}
