pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// Stands where a case could not be had.
ColumnLayout {
    id: failure

    required property AppStore store
    readonly property string words: store.words.text("loadFailed")

    signal retryWanted

    spacing: 20

    TextLabel {
        Layout.fillWidth: true
        Layout.leftMargin: 30
        Layout.rightMargin: 30
        text: failure.words
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        font: Fonts.face.reading(20)
        color: Ink.paperInk
    }

    BrandButton {
        Layout.alignment: Qt.AlignHCenter
        overSheet: true
        text: failure.store.words.text("retry")
        onClicked: failure.retryWanted()
    }
}
