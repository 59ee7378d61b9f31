import QtQuick
import QtQuick.Controls.Basic

ApplicationWindow {
    width: 1320
    height: 880
    visible: true
    title: "Bare window"

    header: ToolBar {
        Row {
            Button {
                text: "Open"
            }

            TextField {
                placeholderText: "Search"
            }
        }
    }

    ListView {
        anchors.fill: parent
        model: 40

        delegate: ItemDelegate {
            required property int index

            width: ListView.view.width
            text: "Entry " + index
        }

        ScrollBar.vertical: ScrollBar {}
    }
}
