pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

// The reading screen of one case: a single column of paper, with the lesson in a dock below.
FocusScope {
    id: reader

    required property AppStore store
    required property caseCard card
    readonly property real side: 32
    // Of the corners at the bottom, where the reader fills a sheet.
    property real radius: 0

    // The reader gives way to the conversation that it has begun.
    signal asked

    function turnUnder(selection: TextSelection) {
        const height = scroll.mapFromItem(null, selection.pointer).y;
        const beyond = height < 0 ? height : Math.max(0, height - scroll.height);
        if (beyond === 0)
            return;
        scroll.scrollTo(scroll.contentY + Math.max(-24, Math.min(24, beyond / 3)));
        selection.follow();
    }

    function glideToSection(section: Item) {
        if (section)
            scroll.glideTo(section.mapToItem(scroll.contentItem, 0, 0).y);
    }

    function goToSection(index: int) {
        glideToSection((body.item as ReaderBody).sectionAt(index));
        if (rest.status === Loader.Ready)
            glideToSection((rest.item as ReaderRest).sectionAt(index));
    }

    function openRelated(card: caseCard) {
        sheet.setSource("CaseSheet.qml", {
            store: reader.store,
            card: card
        });
        sheet.active = true;
    }

    // Also from the dock.
    Keys.forwardTo: [scroll]
    Keys.onPressed: event => {
        event.accepted = true;
        if (event.matches(StandardKey.Copy))
            (dockWords.empty ? words : dockWords).copy();
        else if (event.matches(StandardKey.SelectAll))
            words.selectAll();
        else
            event.accepted = false;
    }

    CaseReaderModel {
        id: reading

        store: reader.store
        card: reader.card
        onAsked: reader.asked()
    }

    TextSelection {
        id: words

        onBegun: {
            scroll.forceActiveFocus(Qt.MouseFocusReason);
            dockWords.clear();
        }
        onMenuWanted: (text, point) => copyMenu.openAt(words, text, point)
    }

    TextSelection {
        id: dockWords

        onBegun: {
            scroll.forceActiveFocus(Qt.MouseFocusReason);
            words.clear();
        }
        onMenuWanted: (text, point) => copyMenu.openAt(dockWords, text, point)
    }

    // The title, and what is special about the text.
    Announcement {
        words: {
            if (!reading.loaded)
                return reading.failed ? failure.words : "";
            return reading.title + (reading.offline ? ". " + reader.store.words.text("offlineCopy") : "") + (
                reading.languageNote === "" ? "" : ". " + reading.languageNote);
        }
    }

    TextSizing {
        id: sizing

        view: scroll
        size: reader.store.readingSize
        width: Math.min(740, scroll.width - 2 * reader.side)
    }

    Rectangle {
        anchors.fill: parent
        radius: reader.radius
        color: Ink.sheet
    }

    Rectangle {
        width: parent.width
        height: reader.radius
        color: Ink.sheet
    }

    ScrollPage {
        id: scroll

        anchors.fill: parent
        visible: reading.loaded || !reading.failed
        focus: true
        contentHeight: column.implicitHeight + 2 * reader.side + (reading.hasLesson ? 80 : 0)
        bottomMargin: dock.visible ? dock.height + 2 * dock.outside : 0
        Accessible.role: Accessible.Document
        Accessible.name: reading.title

        Column {
            id: column

            x: Math.round((scroll.width - width) / 2)
            y: reader.side
            width: sizing.width
            spacing: 28

            Item {
                width: parent.width
                height: controls.height + 12

                ReaderControls {
                    id: controls

                    width: parent.width
                    store: reader.store
                    model: reading
                }
            }

            ReaderHeader {
                width: parent.width
                store: reader.store
                model: reading
                selection: words
            }

            // Made piece by piece between two frames, so that a long case never holds the window, and
            // first what is seen first.
            Loader {
                id: body

                width: parent.width
                asynchronous: true
                visible: status === Loader.Ready
                Component.onCompleted: setSource("ReaderBody.qml", {
                    store: reader.store,
                    model: reading,
                    selection: words,
                    sizing: sizing
                })
                active: reading.loaded
            }

            Loader {
                id: rest

                width: parent.width
                asynchronous: true
                visible: status === Loader.Ready
                Component.onCompleted: setSource("ReaderRest.qml", {
                    store: reader.store,
                    model: reading,
                    selection: words,
                    sizing: sizing
                })
                active: body.status === Loader.Ready
            }

            Item {
                width: parent.width
                height: Math.max(120, scroll.height - y - 2 * reader.side)
                visible: body.status !== Loader.Ready && patience.over

                Spinner {
                    anchors.centerIn: parent
                    color: Ink.paperMute
                    label: reading.title
                }
            }
        }
    }

    // The text fades out before it would look out under the dock.
    Rectangle {
        y: dock.y - height
        width: parent.width - 2 * dock.outside
        x: dock.outside
        height: 24
        visible: dock.visible
        gradient: Gradient {
            GradientStop {
                position: 0
                color: Qt.rgba(Ink.sheet.r, Ink.sheet.g, Ink.sheet.b, 0)
            }

            GradientStop {
                position: 1
                color: Ink.sheet
            }
        }
    }

    Rectangle {
        anchors.top: dock.top
        anchors.bottom: parent.bottom
        x: dock.outside
        width: parent.width - 2 * dock.outside
        visible: dock.visible
        color: Ink.sheet
    }

    LessonDock {
        id: dock

        readonly property real outside: 14

        anchors.bottom: parent.bottom
        anchors.bottomMargin: outside
        x: outside
        width: parent.width - 2 * outside
        mostHeight: reader.height * 0.6
        visible: reading.hasLesson
        store: reader.store
        model: reading
        selection: dockWords
    }

    ReaderFailure {
        id: failure

        anchors.centerIn: parent
        width: parent.width
        visible: !reading.loaded && reading.failed
        store: reader.store
        onRetryWanted: reading.beginLoad()
    }

    // A quick answer shows no sign of waiting.
    Timer {
        id: patience

        property bool over: false

        interval: 150
        running: true
        onTriggered: over = true
    }

    // A drag beyond the edge turns the page under the pointer.
    Timer {
        readonly property TextSelection dragged: dockWords.dragging ? dockWords : words

        interval: 16
        repeat: true
        running: dragged.dragging
        onTriggered: reader.turnUnder(dragged)
    }

    MenuPanel {
        id: copyMenu

        property TextSelection selection: words

        function openAt(selection: TextSelection, text: Item, point: point) {
            const place = reader.mapFromItem(text, point);
            copyMenu.selection = selection;
            popup(place.x, place.y);
        }

        MenuRow {
            text: reader.store.words.text("copy")
            enabled: !copyMenu.selection.empty
            onTriggered: copyMenu.selection.copy()
        }
    }

    Connections {
        target: body.item
        ignoreUnknownSignals: true

        function onSectionChosen(index: int) {
            reader.goToSection(index);
        }
    }

    Connections {
        target: rest.item
        ignoreUnknownSignals: true

        function onRelatedChosen(card: caseCard) {
            reader.openRelated(card);
        }
    }

    Loader {
        id: sheet

        active: false
    }

    Connections {
        target: sheet.item
        ignoreUnknownSignals: true

        function onDismissed() {
            sheet.active = false;
        }

        function onAsked() {
            reader.asked();
        }
    }
}
