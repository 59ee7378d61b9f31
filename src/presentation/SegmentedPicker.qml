pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// Picks one of a few choices that all stand in sight.
Rectangle {
    id: picker

    required property string title
    required property list<string> labels
    required property int index

    signal chosen(index: int)

    implicitHeight: 36
    radius: 9
    color: Ink.paper1
    border.color: Ink.line
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Row {
        anchors.fill: parent
        anchors.margins: 3

        Repeater {
            model: picker.labels

            delegate: T.RadioButton {
                id: segment

                required property int index
                required property string modelData
                readonly property bool current: picker.index === index

                width: parent.width / picker.labels.length
                height: parent.height
                focusPolicy: Qt.StrongFocus
                hoverEnabled: true
                text: modelData
                checked: current
                onClicked: picker.chosen(index)
                Accessible.name: text
                Accessible.onPressAction: segment.clicked()
                Accessible.onToggleAction: segment.clicked()
                Keys.onReturnPressed: segment.clicked()
                Keys.onEnterPressed: segment.clicked()

                contentItem: TextLabel {
                    text: segment.text
                    elide: Text.ElideRight
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    font: Fonts.face.mono(Fonts.label, segment.current ? 600 : 500)
                    color: segment.current ? Ink.paper : Ink.dim
                    Accessible.ignored: true
                }

                background: Rectangle {
                    radius: 6
                    color: segment.current ? Ink.paper2 : "transparent"
                    border.width: segment.visualFocus ? 2 : segment.current ? 1 : 0
                    border.color: segment.visualFocus ? Ink.brand : Ink.lineStrong
                }
            }
        }
    }
}
