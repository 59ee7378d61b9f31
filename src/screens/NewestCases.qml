pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// The newest cases, or why there are none yet.
ColumnLayout {
    id: newest

    required property AppStore store
    required property HomeModel model

    signal chosen(card: caseCard)

    spacing: 14

    Eyebrow {
        Layout.fillWidth: true
        words: newest.store.words.text("newestIn")
        Accessible.role: Accessible.Heading
    }

    TextLabel {
        Layout.fillWidth: true
        visible: newest.model.empty && newest.model.failed
        text: newest.store.words.text("loadFailed")
        wrapMode: Text.Wrap
        font: Fonts.face.reading(17)
        Accessible.role: Accessible.Notification
    }

    BrandButton {
        visible: newest.model.empty && newest.model.failed
        text: newest.store.words.text("retry")
        onClicked: newest.model.beginLoad()
    }

    Spinner {
        Layout.margins: 30
        visible: newest.model.empty && !newest.model.failed
        label: newest.store.words.text("newestIn")
    }

    Repeater {
        model: newest.model.latest

        delegate: PaperCaseCard {
            required property caseCard card

            Layout.fillWidth: true
            store: newest.store
            onClicked: newest.chosen(card)
        }
    }
}
