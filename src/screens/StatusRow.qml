pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// Whether the service is there.
RowLayout {
    id: row

    required property AppStore store
    readonly property string words: store.words.text(store.connecting ? "reconnecting"
                                                     : store.connected ? "connected" : "offline")

    spacing: 8

    Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: row.store.connected ? Ink.online : Ink.mute
    }

    TextLabel {
        Layout.fillWidth: true
        text: row.words
        elide: Text.ElideRight
        font: Fonts.face.mono(10)
        color: Ink.mute
        Accessible.role: Accessible.StatusBar

        Announcement {
            words: row.words
        }
    }

    Spinner {
        visible: row.store.connecting
        size: 12
        label: row.words
    }
}
