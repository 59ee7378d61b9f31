pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
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
        named(field.text);
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

        T.TextField {
            id: field

            Layout.fillWidth: true
            implicitHeight: contentHeight + 24
            padding: 12
            focus: true
            activeFocusOnTab: true
            selectByMouse: true
            clip: true
            text: dialog.name
            font: Fonts.face.field(18)
            color: Ink.paper
            selectionColor: Ink.flagship
            selectedTextColor: Ink.paperInk
            Accessible.name: dialog.store.words.text("rename")
            Component.onCompleted: selectAll()
            onAccepted: dialog.finish()

            background: Rectangle {
                radius: 9
                color: Ink.paper2
                border.color: field.activeFocus ? Ink.brand : Ink.lineStrong
            }

            TextLabel {
                x: field.leftPadding
                width: field.width - 2 * x
                height: field.height
                visible: field.text === "" && field.preeditText === ""
                text: dialog.store.words.text("rename")
                elide: Text.ElideRight
                verticalAlignment: Text.AlignVCenter
                font: field.font
                color: Ink.mute
                Accessible.ignored: true
            }
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
