pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

// What the case is: known from its card before the case itself has come.
Column {
    id: header

    required property AppStore store
    required property CaseReaderModel model
    required property TextSelection selection

    spacing: 15

    TextLabel {
        width: parent.width
        bottomPadding: 13
        visible: header.model.offline
        text: header.store.words.text("offlineCopy")
        wrapMode: Text.Wrap
        font: Fonts.face.mono(Fonts.caption)
        color: Ink.paperMute
    }

    Row {
        spacing: 10

        Rectangle {
            width: 22
            height: 22
            radius: 4
            color: ArchiveStyle.color(header.model.archive)
        }

        TextLabel {
            anchors.verticalCenter: parent.verticalCenter
            text: ArchiveStyle.domain(header.model.archive)
            font: Fonts.face.mono(Fonts.caption)
            color: Ink.paperMute
        }
    }

    SelectableText {
        width: parent.width
        selection: header.selection
        text: header.model.title
        font: Fonts.face.archivo(46, 800, 62)
        leading: -2
        Accessible.role: Accessible.Heading
    }

    SelectableText {
        width: parent.width
        visible: text !== ""
        selection: header.selection
        text: header.model.summary
        font: Fonts.face.reading(header.store.readingSize + 3)
        leading: 5
        color: Ink.paperMute
    }

    TextLabel {
        width: parent.width
        visible: text !== ""
        text: header.model.languageNote
        wrapMode: Text.Wrap
        font: Fonts.face.mono(Fonts.label)
        color: Ink.paperInk
    }
}
