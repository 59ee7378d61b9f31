pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

// The assistant's mark.
Item {
    id: mark

    property real size: 40

    implicitWidth: size
    implicitHeight: size
    Accessible.ignored: true

    Image {
        id: image

        anchors.fill: parent
        source: "qrc:/images/tessel-mark.png"
        sourceSize.width: mark.size * Screen.devicePixelRatio
        sourceSize.height: mark.size * Screen.devicePixelRatio
        asynchronous: true
        smooth: true
        visible: status === Image.Ready
    }

    Rectangle {
        anchors.fill: parent
        visible: image.status === Image.Error
        radius: 0.22 * mark.size
        color: Ink.flagship

        Symbol {
            anchors.centerIn: parent
            name: "text.bubble.fill"
            size: mark.size - 18
            color: Ink.paperInk
        }
    }
}
