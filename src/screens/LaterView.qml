pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Screens

// Stands for the screens that are still to come.
EmptyState {
    required property AppStore store

    symbol: "doc.text"
    title: store.words.text("chooseCase")
}
