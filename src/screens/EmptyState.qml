pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// Stands where there is nothing to show.
Item {
    id: state

    required property string symbol
    required property string title
    property string detail

    ColumnLayout {
        anchors.centerIn: parent
        width: Math.min(parent.width - 64, 560)
        spacing: 16

        Symbol {
            Layout.alignment: Qt.AlignHCenter
            name: state.symbol
            size: 32
            color: Ink.mute
        }

        TextLabel {
            Layout.fillWidth: true
            text: state.title
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            font: Fonts.face.archivo(30, 700, 80)
        }

        TextLabel {
            Layout.alignment: Qt.AlignHCenter
            Layout.maximumWidth: 400
            Layout.fillWidth: true
            visible: text !== ""
            text: state.detail
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            font: Fonts.face.reading(18)
            leading: 3
            color: Ink.dim
        }
    }
}
