pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// A case over another screen.
FocusScope {
    id: sheet

    required property AppStore store
    required property string archive
    required property string title
    required property string summary

    signal dismissed

    focus: true
    Component.onCompleted: forceActiveFocus()
    Keys.onEscapePressed: dismissed()

    Rectangle {
        anchors.fill: parent
        color: "black"
        opacity: 0.45

        TapHandler {
            onTapped: sheet.dismissed()
        }

        WheelHandler {}
    }

    Rectangle {
        anchors.centerIn: parent
        width: Math.min(900, parent.width - 32)
        height: Math.min(800, parent.height - 32)
        radius: 14
        color: Ink.paper0
        border.color: Ink.lineStrong
        Accessible.role: Accessible.Dialog
        Accessible.name: sheet.title

        TapHandler {}

        ColumnLayout {
            anchors.fill: parent
            anchors.margins: 1
            spacing: 0

            RowLayout {
                Layout.fillWidth: true
                Layout.margins: 18

                Eyebrow {
                    Layout.fillWidth: true
                    words: ArchiveStyle.domain(sheet.archive)
                }

                BrandButton {
                    focus: true
                    text: sheet.store.words.text("done")
                    onClicked: sheet.dismissed()
                }
            }

            EmptyState {
                Layout.fillWidth: true
                Layout.fillHeight: true
                symbol: "doc.text"
                title: sheet.title
                detail: sheet.summary
            }
        }
    }
}
