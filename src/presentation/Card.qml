pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation

// A block on the raised ground; its rows stand in a column.
Rectangle {
    id: card

    property real padding: 26
    property alias spacing: rows.spacing
    default property alias rows: rows.data

    implicitHeight: rows.implicitHeight + 2 * padding
    radius: 16
    color: Ink.paper2

    ColumnLayout {
        id: rows

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: card.padding
    }
}
