pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// Asks for another name.
Sheet {
    id: dialog

    required property AppStore store
    required property string name

    signal named(name: string)
    signal dismissed

    function finish() {
        named(name);
        close();
    }

    width: parent ? Math.min(460, parent.width - 80) : 460
    padding: 24
    ground: Ink.paper1
    title: store.words.text("rename")
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

        TextEntry {
            Layout.fillWidth: true
            focus: true
            padding: 12
            ground: Ink.paper2
            font: Fonts.face.field(18)
            title: dialog.store.words.text("rename")
            text: dialog.name
            onTextChanged: dialog.name = text
            onAccepted: dialog.finish()
            // So that typing replaces it.
            Component.onCompleted: selectAll()
        }

        RowLayout {
            Layout.alignment: Qt.AlignRight
            spacing: 10

            BrandButton {
                text: dialog.store.words.text("cancel")
                onClicked: dialog.close()
            }

            BrandButton {
                filled: true
                text: dialog.store.words.text("done")
                onClicked: dialog.finish()
            }
        }
    }
}
