pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// Asks before something is lost. The keyboard begins at the harmless answer.
Sheet {
    id: dialog

    required property AppStore store

    signal confirmed
    signal dismissed

    width: parent ? Math.min(420, parent.width - 80) : 420
    padding: 24
    ground: Ink.paper1
    onClosed: dismissed()

    contentItem: ColumnLayout {
        spacing: 20

        TextLabel {
            Layout.fillWidth: true
            text: dialog.title
            wrapMode: Text.Wrap
            font: Fonts.face.archivo(22, 700, 90)
            Accessible.role: Accessible.Heading
        }

        RowLayout {
            Layout.alignment: Qt.AlignRight
            spacing: 10

            BrandButton {
                focus: true
                text: dialog.store.words.text("cancel")
                onClicked: dialog.close()
            }

            BrandButton {
                filled: true
                text: dialog.store.words.text("delete")
                onClicked: {
                    dialog.confirmed();
                    dialog.close();
                }
            }
        }
    }
}
