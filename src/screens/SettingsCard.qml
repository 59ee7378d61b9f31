pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// Language, appearance, and the search for a newer release.
Card {
    id: card

    required property AppStore store
    required property AccountModel model
    readonly property list<string> appearances: ["system", "light", "dark"]

    spacing: 22

    UpdateCheck {
        id: update

        store: card.store
    }

    Eyebrow {
        words: card.store.words.text("settings")
    }

    RowLayout {
        Layout.fillWidth: true
        spacing: 12

        TextLabel {
            Layout.fillWidth: true
            text: card.store.words.text("language")
            font: Fonts.face.reading(21)
            Accessible.ignored: true
        }

        ChoicePicker {
            implicitWidth: 230
            title: card.store.words.text("language")
            model: card.model.languages
            currentIndex: card.model.language
            onChosen: index => card.model.language = index
        }
    }

    RowLayout {
        Layout.fillWidth: true
        spacing: 12

        TextLabel {
            Layout.fillWidth: true
            text: card.store.words.text("appearance")
            font: Fonts.face.reading(21)
            Accessible.ignored: true
        }

        SegmentedPicker {
            implicitWidth: 280
            title: card.store.words.text("appearance")
            labels: [card.store.words.text("appearanceSystem"), card.store.words.text("appearanceLight"), card.store.words.text("appearanceDark")]
            index: card.appearances.indexOf(Appearance.choice)
            onChosen: index => Appearance.choice = card.appearances[index]
        }
    }

    RowLayout {
        spacing: 12

        BrandButton {
            enabled: !update.checking
            text: card.store.words.text(update.checking ? "checking" : "checkUpdate")
            onClicked: update.begin()
        }

        BrandButton {
            visible: update.found
            filled: true
            text: card.store.words.text("updateNow") + " ↗"
            onClicked: card.store.openAddress(update.download)
        }
    }

    TextLabel {
        Layout.fillWidth: true
        visible: text !== ""
        text: update.message
        wrapMode: Text.Wrap
        font: Fonts.face.mono(11)
        color: Ink.dim
        Accessible.role: Accessible.StatusBar
    }
}
