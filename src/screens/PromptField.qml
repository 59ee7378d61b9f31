pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// Where a question is written: it grows from two lines to seven, and scrolls beyond.
Flickable {
    id: scroll

    required property PromptModel model
    readonly property real line: metrics.lineSpacing
    readonly property bool typing: field.activeFocus

    // Can be taken back, unlike a new text.
    function put(words: string) {
        field.remove(0, field.length);
        field.insert(0, words);
        field.cursorPosition = field.length;
    }

    function compose() {
        field.forceActiveFocus(Qt.OtherFocusReason);
    }

    implicitHeight: Math.max(2 * line, Math.min(field.contentHeight, 7 * line)) + 8
    boundsBehavior: Flickable.StopAtBounds
    clip: true

    Connections {
        target: scroll.model

        function onPromptChanged() {
            if (field.text !== scroll.model.prompt)
                scroll.put(scroll.model.prompt);
        }
    }

    FontMetrics {
        id: metrics

        font: field.font
    }

    T.TextArea.flickable: T.TextArea {
        id: field

        objectName: "chat-prompt"
        padding: 4
        wrapMode: TextEdit.Wrap
        textFormat: TextEdit.PlainText
        selectByMouse: true
        font: Fonts.face.field(20)
        color: Ink.paper
        selectionColor: Ink.flagship
        selectedTextColor: Ink.paperInk
        Accessible.role: Accessible.EditableText
        Accessible.name: scroll.model.placeholder
        Accessible.multiLine: true
        onTextChanged: scroll.model.prompt = text
        // The keyboard has to get out of the field again.
        Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
        Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)

        cursorDelegate: Rectangle {
            width: 2
            color: Ink.brand
            visible: field.activeFocus

            SequentialAnimation on opacity {
                running: field.activeFocus
                loops: Animation.Infinite

                PropertyAction {
                    value: 1
                }

                PauseAnimation {
                    duration: 500
                }

                PropertyAction {
                    value: 0
                }

                PauseAnimation {
                    duration: 500
                }
            }
        }

        TextLabel {
            x: 4
            y: 4
            width: field.width - 8
            visible: field.length === 0 && field.preeditText === ""
            text: scroll.model.placeholder
            elide: Text.ElideRight
            wrapMode: Text.Wrap
            maximumLineCount: 2
            font: field.font
            color: Ink.mute
            Accessible.ignored: true
        }
    }

    T.ScrollBar.vertical: ScrollBarLine {}
}
