pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation

// Shows where a scrolled view stands, and takes the keyboard and a drag.
Rectangle {
    id: bar

    required property Flickable flickable
    readonly property real share: flickable.visibleArea.heightRatio

    parent: flickable
    anchors.right: parent.right
    anchors.rightMargin: 3
    y: flickable.visibleArea.yPosition * flickable.height + 2
    height: Math.max(28, share * flickable.height - 4)
    width: hover.hovered || drag.active ? 8 : 5
    radius: width / 2
    visible: share < 1
    color: Ink.mute
    opacity: flickable.moving || hover.hovered || drag.active ? 0.7 : 0.25

    HoverHandler {
        id: hover
    }

    DragHandler {
        id: drag

        property real startY: 0

        target: null
        xAxis.enabled: false
        onActiveChanged: startY = bar.flickable.contentY
        onActiveTranslationChanged: {
            const room = bar.flickable.contentHeight - bar.flickable.height;
            const travel = bar.flickable.height - bar.height;
            if (travel > 0)
                bar.flickable.contentY = Math.max(0, Math.min(room, startY + activeTranslation.y * room / travel));
        }
    }
}
