pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

// The application's settings, in a window of their own.
Window {
    id: window

    required property AppStore store

    width: 520
    height: form.implicitHeight
    minimumWidth: 520
    maximumWidth: 520
    minimumHeight: form.implicitHeight
    maximumHeight: form.implicitHeight
    title: store.words.text("settings")
    color: Ink.paper0

    ConnectionSettings {
        id: form

        anchors.fill: parent
        focus: true
        store: window.store
    }

    Shortcut {
        sequences: ["Ctrl+W", "Escape"]
        onActivated: window.close()
    }
}
