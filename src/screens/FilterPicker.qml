pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation
import Quillmere.Screens

// Picks one choice of a filter. Its name is the filter's, its description the choice.
T.ComboBox {
    id: picker

    required property CaseFilter filter
    required property string title

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    leftPadding: 10
    rightPadding: 24
    verticalPadding: 9
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    model: filter.choices
    textRole: "label"
    currentIndex: filter.index
    onActivated: index => filter.index = index
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
        font: Fonts.face.mono(Fonts.label)
        color: picker.currentIndex > 0 ? Ink.paper : Ink.dim
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
        required property string label

        width: ListView.view.width
        implicitHeight: implicitContentHeight + topPadding + bottomPadding
        horizontalPadding: 10
        verticalPadding: 9
        hoverEnabled: true
        highlighted: picker.highlightedIndex === index
        Accessible.name: label
        Accessible.onPressAction: {
            picker.filter.index = index;
            picker.popup.close();
        }

        contentItem: ChoiceLabel {
            text: choice.label
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
        width: Math.max(240, picker.width)
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
