pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// Picks one of several choices. Its name is what is chosen about, its description the choice.
T.ComboBox {
    id: picker

    required property string title
    property font labelFont: Fonts.face.mono(Fonts.label)
    property color labelColor: Ink.paper
    property real popupWidth: width

    signal chosen(index: int)

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    leftPadding: 10
    rightPadding: 24
    verticalPadding: 9
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    onActivated: index => chosen(index)
    Accessible.name: title
    Accessible.description: displayText
    Accessible.onPressAction: popup.open()

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }

    contentItem: TextLabel {
        text: picker.displayText
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        font: picker.labelFont
        color: picker.labelColor
        Accessible.ignored: true
    }

    indicator: Symbol {
        x: picker.width - width - 8
        y: (picker.height - height) / 2
        name: "chevron.down"
        size: 12
        color: Ink.mute
    }

    background: Rectangle {
        radius: 7
        color: Ink.paper1
        border.color: picker.hovered || picker.popup.visible ? Ink.lineStrong : Ink.line

        Rectangle {
            anchors.fill: parent
            anchors.margins: -2
            radius: 9
            visible: picker.visualFocus
            color: "transparent"
            border.color: Ink.brand
            border.width: 2
        }
    }

    delegate: T.ItemDelegate {
        id: choice

        required property int index

        width: ListView.view.width
        implicitHeight: implicitContentHeight + topPadding + bottomPadding
        horizontalPadding: 10
        verticalPadding: 9
        hoverEnabled: true
        highlighted: picker.highlightedIndex === index
        text: picker.textAt(index)
        Accessible.name: text
        Accessible.onPressAction: {
            picker.chosen(index);
            picker.popup.close();
        }

        contentItem: ChoiceLabel {
            text: choice.text
            marked: picker.currentIndex === choice.index
        }

        background: Rectangle {
            radius: 6
            color: Ink.paper
            opacity: choice.highlighted ? 0.1 : 0
        }
    }

    popup: T.Popup {
        y: picker.height + 4
        width: picker.popupWidth
        height: Math.min(implicitHeight, 320)
        implicitHeight: implicitContentHeight + topPadding + bottomPadding
        padding: 6
        margins: 8

        contentItem: ListView {
            implicitHeight: contentHeight
            model: picker.delegateModel
            currentIndex: picker.highlightedIndex
            highlightMoveDuration: 0
            boundsBehavior: Flickable.StopAtBounds
            clip: true

            T.ScrollBar.vertical: ScrollBarLine {}
        }

        background: Rectangle {
            radius: 9
            color: Ink.paper2
            border.color: Ink.lineStrong
        }
    }
}
