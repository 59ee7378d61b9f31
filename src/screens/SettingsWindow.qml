pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

Window {
    id: window

    required property AppStore store

    width: form.implicitWidth
    height: form.implicitHeight
    minimumWidth: form.implicitWidth
    maximumWidth: form.implicitWidth
    minimumHeight: form.implicitHeight
    maximumHeight: form.implicitHeight
    visible: true
    title: store.words.text("settings")
    color: Ink.paper0

    ConnectionSettings {
        id: form

        anchors.fill: parent
        store: window.store
        focus: true
    }

    Shortcut {
        sequences: ["Ctrl+W", "Escape"]
        onActivated: window.close()
    }
}
