pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// What stands under the messages: the work on an answer, why there is none, or how to go on.
ColumnLayout {
    id: end

    required property AppStore store

    signal stopped
    signal picked(question: string)

    spacing: 28

    RowLayout {
        Layout.fillWidth: true
        visible: end.store.chatting
        spacing: 10

        Spinner {
            size: 16
            label: progress.text
        }

        TextLabel {
            id: progress

            Layout.fillWidth: true
            text: end.store.chatProgress !== "" ? end.store.chatProgress
                                                : end.store.words.text("askThinking")
            wrapMode: Text.Wrap
            font: Fonts.face.mono(Fonts.caption)
            color: Ink.dim
        }

        QuietButton {
            Layout.rightMargin: -rightPadding
            text: end.store.words.text("stop")
            ink: Ink.paper
            onClicked: end.stopped()
        }
    }

    ColumnLayout {
        Layout.fillWidth: true
        visible: end.store.chatError !== ""
        spacing: 14

        ThreadText {
            id: failure

            Layout.fillWidth: true
            text: end.store.chatError
            font: Fonts.face.reading(Fonts.body)
            color: Ink.failure

            LineSpacing {
                document: failure.textDocument
                extra: 3
            }
        }

        BrandButton {
            visible: !end.store.signedIn
            filled: true
            text: end.store.words.text("authSignin")
            onClicked: end.store.destination = "account"
        }
    }

    FollowUps {
        Layout.fillWidth: true
        visible: end.store.messageCount > 0 && !end.store.chatting
        store: end.store
        onPicked: question => end.picked(question)
    }
}
