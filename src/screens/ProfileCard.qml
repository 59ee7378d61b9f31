pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// Name, email address and password of the account.
Card {
    id: card

    required property AppStore store
    required property AccountModel model
    readonly property appUser user: store.account.user

    signal editing(action: string)

    spacing: 18

    Eyebrow {
        words: card.store.words.text("acctProfile")
    }

    ProfileRow {
        Layout.fillWidth: true
        label: card.store.words.text("authName")
        value: card.user.handle
        change: card.store.words.text("changeName")
        onWanted: card.editing("rename")
    }

    ProfileRow {
        Layout.fillWidth: true
        label: card.store.words.text("authEmail")
        value: card.user.email === "" ? "—" : card.user.email
        change: card.store.words.text("changeEmail")
        onWanted: card.editing("email")
    }

    TextLabel {
        visible: card.user.verificationKnown
        text: card.store.words.text(card.user.verified ? "acctVerified" : "acctUnverified")
        font: Fonts.face.mono(12)
        color: Ink.dim
    }

    BrandButton {
        visible: card.user.email !== "" && !card.user.verified
        enabled: !card.model.resending && !card.model.resent
        text: card.store.words.text(card.model.resent ? "acctResent" : "acctResend")
        onClicked: card.model.beginResend()
    }

    BrandButton {
        text: card.store.words.text("changePassword")
        onClicked: card.editing("password")
    }

    TextLabel {
        Layout.fillWidth: true
        visible: card.store.credentialsInFile
        text: card.store.words.text("fileCredentials")
        wrapMode: Text.Wrap
        font: Fonts.face.mono(11)
        color: Ink.mute
    }
}
