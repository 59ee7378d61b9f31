pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Quillmere.Presentation
import Quillmere.Screens

// The plan at the left, what is free of any plan at the right.
Card {
    id: card

    required property AppStore store
    required property AccountModel model

    RowLayout {
        Layout.fillWidth: true
        spacing: 22

        // Not a layout: those give wrapped texts the height of another width.
        Column {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            Layout.alignment: Qt.AlignTop
            spacing: 14

            Eyebrow {
                words: card.store.words.text("subTitle")
            }

            TextLabel {
                id: plan

                width: parent.width
                text: card.model.pro ? "Pro" : card.store.words.text("acctPlanFree")
                font: Fonts.face.archivo(43, 800, 62)
            }

            TextLabel {
                width: parent.width
                text: card.store.words.text(card.model.pro ? "cmpP1" : "freeLimitAskBody")
                wrapMode: Text.Wrap
                font: Fonts.face.reading(18)
                leading: 3
                color: Ink.dim
            }

            Flow {
                width: parent.width
                spacing: 10
                enabled: !card.store.openingMembership

                BrandButton {
                    visible: card.model.pro
                    text: card.store.words.text("manageSub") + " ↗"
                    onClicked: card.store.beginOpenMembership("yearly")
                }

                BrandButton {
                    visible: !card.model.pro
                    filled: true
                    text: card.store.words.text("subscribeYearly") + " ↗"
                    onClicked: card.store.beginOpenMembership("yearly")
                }

                BrandButton {
                    visible: !card.model.pro
                    text: card.store.words.text("goMonthly") + " ↗"
                    onClicked: card.store.beginOpenMembership("monthly")
                }
            }

            Spinner {
                visible: card.store.openingMembership
                size: 16
                label: card.store.words.text("browserWaiting")
            }

            LinkButton {
                // Its words stand under the others.
                x: -leftPadding
                enabled: !card.store.refreshingAccount
                text: card.store.words.text("refreshMembership")
                onClicked: card.store.beginRefreshAccount(true)
            }

            TextLabel {
                width: parent.width
                text: card.store.words.text("membershipWebHint")
                wrapMode: Text.Wrap
                font: Fonts.face.mono(10)
                color: Ink.mute
            }
        }

        Rectangle {
            Layout.fillHeight: true
            implicitWidth: 1
            color: Ink.line
        }

        Column {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            Layout.alignment: Qt.AlignTop
            spacing: 14

            Eyebrow {
                words: card.store.words.text("freeTitle")
            }

            // As high as the plan, whose letters another font may have to lend.
            Item {
                width: parent.width
                height: Math.max(plan.height, total.y + total.height)

                TextLabel {
                    id: total

                    y: Math.max(0, plan.baselineOffset - baselineOffset)
                    text: card.store.words.number(card.store.health.total)
                    font: Fonts.face.archivo(43, 800, 62)
                }
            }

            TextLabel {
                width: parent.width
                text: card.store.words.textWithNumber("freeOwned", card.store.health.total)
                wrapMode: Text.Wrap
                font: Fonts.face.reading(18)
                leading: 3
                color: Ink.dim
            }

            LinkButton {
                x: -leftPadding
                text: card.store.words.text("browseAllShort")
                labelFont: Fonts.face.mono(12)
                onClicked: card.store.destination = "all"
            }
        }
    }
}
