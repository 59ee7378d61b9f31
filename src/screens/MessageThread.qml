pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// The messages, or the opener where there are none yet. Only those in sight exist. A conversation is
// opened at its end. A growing answer leaves the page where it is; a new message moves it to the end.
ListView {
    id: thread

    required property AppStore store
    // Where the text begins, and how wide it is.
    required property real inset
    required property real textWidth
    readonly property int messageCount: store.messageCount
    // Until the conversation has been seen.
    property bool opening: true

    signal chosen(card: caseCard)
    signal picked(question: string)
    signal stopped

    function lowest(): real {
        return Math.max(originY - topMargin, originY + contentHeight + bottomMargin - height);
    }

    function turn(pages: real) {
        scrolling.stop();
        contentY = Math.max(originY - topMargin, Math.min(contentY + pages * 0.9 * height, lowest()));
    }

    function goToEnd() {
        positionViewAtEnd();
        contentY = lowest();
    }

    function keepEndWhileOpening() {
        if (opening && height > 0)
            goToEnd();
    }

    // The heights of messages out of sight are guesses, so the last stretch is what is animated.
    function showEnd() {
        // The opener leaves with the first message, but its place only with the next frame.
        end.forceLayout();
        const before = contentY;
        positionViewAtEnd();
        const bottom = lowest();
        scrolling.from = Math.min(bottom, Math.max(before, bottom - height));
        scrolling.to = bottom;
        scrolling.restart();
    }

    model: store.messages
    spacing: 28
    topMargin: 28
    bottomMargin: end.airAbove + end.height + 28
    cacheBuffer: opening ? 0 : 800
    // No message is a current one, which would be made however far away it is.
    currentIndex: -1
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    onHeightChanged: keepEndWhileOpening()
    onBottomMarginChanged: keepEndWhileOpening()
    onMessageCountChanged: {
        if (!opening)
            arrived.restart();
    }

    delegate: MessageBlock {
        x: thread.inset
        width: thread.textWidth
        store: thread.store
        onChosen: card => thread.chosen(card)
    }

    // The new rows have their places only after this turn.
    Timer {
        id: arrived

        interval: 0
        onTriggered: thread.showEnd()
    }

    NumberAnimation {
        id: scrolling

        target: thread
        property: "contentY"
        duration: 200
        easing.type: Easing.OutCubic
        onFinished: thread.goToEnd()
    }

    Connections {
        target: thread.opening ? thread.Window.window : null

        function onFrameSwapped() {
            thread.opening = false;
        }
    }

    Column {
        id: end

        readonly property real airAbove: thread.messageCount > 0 ? thread.spacing : 0

        parent: thread.contentItem
        x: thread.inset
        y: thread.originY + thread.contentHeight + airAbove
        width: thread.textWidth
        spacing: 28

        Loader {
            id: opener

            readonly property bool wanted: thread.messageCount === 0

            function show() {
                if (wanted)
                    setSource("ChatOpener.qml", {
                        store: thread.store
                    });
                else
                    source = "";
            }

            width: end.width
            visible: wanted
            onWantedChanged: show()
            Component.onCompleted: show()
        }

        Connections {
            target: opener.item
            ignoreUnknownSignals: true

            function onPicked(question: string) {
                thread.picked(question);
            }
        }

        ThreadEnd {
            width: end.width
            store: thread.store
            onStopped: thread.stopped()
            onPicked: question => thread.picked(question)
        }
    }

    T.ScrollBar.vertical: ScrollBarLine {}
}
