pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillmere.Presentation

// A row of a menu.
T.MenuItem {
    id: row

    // Stands in line with the words of rows that can be marked.
    property bool indented: checkable

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 10
    verticalPadding: 9
    hoverEnabled: true

    contentItem: ChoiceLabel {
        text: row.text
        marked: row.checked
        markable: row.indented
    }

    background: Rectangle {
        radius: 6
        color: Ink.paper
        opacity: row.highlighted ? 0.1 : 0
    }

    Accessible.name: text
    Accessible.checkable: checkable
    Accessible.checked: checked
    Accessible.onPressAction: {
        if (checkable)
            toggle();
        clicked();
    }
}
