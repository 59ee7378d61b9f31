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

    // A screen reader is told that the service is away, and then that it is back; nothing while it has
    // always been there.
    property bool away: false
    property bool back: false

    function tell() {
        if (store.connecting)
            return;
        back = store.connected && (away || back);
        away = !store.connected;
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
            words: row.away ? row.store.words.text("offline")
                            : row.back ? row.store.words.text("connected") : ""
        }
    }

    Spinner {
        visible: row.store.connecting
        size: 12
        label: row.words
    }
}
