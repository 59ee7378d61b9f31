pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// What a signed-in user sees of the account.
ColumnLayout {
    id: groups

    required property AppStore store
    required property AccountModel model

    // The user wants to change the name, the email address or the password, or to delete the account.
    signal editing(action: string)

    spacing: 24

    ProfileCard {
        Layout.fillWidth: true
        store: groups.store
        model: groups.model
        onEditing: action => groups.editing(action)
    }

    MembershipCard {
        Layout.fillWidth: true
        store: groups.store
        model: groups.model
    }

    SyncCard {
        Layout.fillWidth: true
        store: groups.store
        model: groups.model
    }

    RowLayout {
        Layout.fillWidth: true

        BrandButton {
            text: groups.store.words.text("navSignout")
            onClicked: groups.store.beginLogout()
        }

        Item {
            Layout.fillWidth: true
        }

        LinkButton {
            Layout.rightMargin: -rightPadding
            visible: groups.store.account.apple
            text: groups.store.words.text("deleteAccount") + " ↗"
            onClicked: groups.store.openAddress(groups.model.accountPage)
        }

        LinkButton {
            Layout.rightMargin: -rightPadding
            visible: !groups.store.account.apple
            text: groups.store.words.text("deleteAccount")
            color: Ink.failure
            onClicked: groups.editing("delete")
        }
    }
}
