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

    // What a screen reader was last told: that the service is away, or back. Nothing while it has always
    // been there.
    property string told

    function tell() {
        if (!store.connecting && (told !== "" || !store.connected))
            told = store.connected ? "connected" : "offline";
    }

    spacing: 8

    Connections {
        target: row.store

        function onConnectingChanged() {
            row.tell();
        }

        function onHealthChanged() {
            row.tell();
        }
    }

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
            words: row.told === "" ? "" : row.store.words.text(row.told)
        }
    }

    Spinner {
        visible: row.store.connecting
        size: 12
        label: row.words
    }
}
