import QtQuick
import Tavrix

// The files that are transferred.
InspectorSection {
    id: section

    title: Words.whatSection
    forgotten: Words.whatForgotten

    SwitchRow {
        setting: SettingsModel.includePhotos
        text: Words.photosSwitch
        help: Words.photosHelp
    }
    SwitchRow {
        setting: SettingsModel.includeLive
        text: Words.liveSwitch
        help: Words.liveHelp
    }
    SwitchRow {
        setting: SettingsModel.liveOnlyPhoto
        text: Words.liveOnlyPhotoSwitch
        help: Words.liveOnlyPhotoHelp
        indent: 16
    }
    SwitchRow {
        setting: SettingsModel.includeVideos
        text: Words.videosSwitch
        help: Words.videosHelp
    }
    SwitchRow {
        setting: SettingsModel.includeAAE
        text: Words.sidecarsSwitch
        help: Words.sidecarsHelp
    }
    Column {
        width: parent.width
        spacing: 8

        OptionTitle {
            width: parent.width
            text: Words.editedTitle
        }
        Picker {
            width: parent.width
            setting: SettingsModel.editedPolicy
            Accessible.name: Words.editedTitle
        }
    }
    Column {
        width: parent.width
        spacing: 8
        visible: SettingsModel.hasOptimized

        Item {
            width: parent.width
            height: 24

            OptionTitle {
                anchors.verticalCenter: parent.verticalCenter
                text: SettingsModel.optimizedTitle
            }
            IconButton {
                id: optimizedButton
                anchors.right: parent.right
                anchors.rightMargin: -4
                anchors.verticalCenter: parent.verticalCenter
                width: 24
                height: 24
                symbol: "info"
                text: Words.optimizedInfo
                onClicked: SettingsModel.showOptimizedInfo(!SettingsModel.isOptimizedInfoOpen)

                InfoPopup {
                    x: parent.width - width
                    visible: SettingsModel.isOptimizedInfoOpen
                    paragraphs: [Words.optimizedInfoWhat, Words.optimizedInfoRemedy]
                    onClosed: SettingsModel.showOptimizedInfo(false)
                }
            }
        }
        SwitchRow {
            setting: SettingsModel.skipOptimized
            text: Words.optimizedSwitch
            help: Words.optimizedHelp
            Accessible.name: SettingsModel.optimizedTitle + ". " + text
        }
    }
    Column {
        width: parent.width
        spacing: 8
        visible: SettingsModel.onlyNew.isUsed

        SwitchRow {
            setting: SettingsModel.onlyNew
            text: Words.onlyNewSwitch
            help: Words.onlyNewHelp
        }
        LinkButton {
            text: Words.onlyNewInfo
            onClicked: onlyNewPopup.visible ? onlyNewPopup.close() : onlyNewPopup.open()

            InfoPopup {
                id: onlyNewPopup
                paragraphs: [Words.onlyNewExplanation, Words.onlyNewDeleted]
            }
        }
    }
    OptionHelp {
        width: parent.width
        visible: !SettingsModel.onlyNew.isUsed
        text: Words.zipTakesAll
    }
    Column {
        width: parent.width
        spacing: 8

        OptionTitle {
            text: Words.periodTitle
        }
        Row {
            width: parent.width
            spacing: 8

            DayField {
                id: firstDay
                width: (parent.width - 8) / 2
                setting: SettingsModel.periodFrom
                placeholderText: Words.periodFromHint
                Accessible.name: Words.periodFromName
                Accessible.description: Words.periodHelp
            }
            DayField {
                id: lastDay
                width: (parent.width - 8) / 2
                setting: SettingsModel.periodTo
                placeholderText: Words.periodToHint
                Accessible.name: Words.periodToName
                Accessible.description: Words.periodHelp
            }
        }
        OptionHelp {
            width: parent.width
            visible: firstDay.isRefused || lastDay.isRefused || SettingsModel.isPeriodEmpty
            text: firstDay.isRefused || lastDay.isRefused ? Words.dayUnknown : Words.periodEmpty
            color: Theme.warn
        }
        OptionHelp {
            width: parent.width
            text: Words.periodHelp
        }
    }
    Column {
        width: parent.width
        spacing: 8

        OptionTitle {
            text: Words.zoneTitle
        }
        ZoneField {
            id: zone
            width: parent.width
            setting: SettingsModel.timeZone
            Accessible.name: Words.zoneTitle
            Accessible.description: Words.zoneHelp
        }
        OptionHelp {
            width: parent.width
            visible: zone.isRefused
            text: Words.zoneUnknown
            color: Theme.warn
        }
        OptionHelp {
            width: parent.width
            text: Words.zoneHelp
        }
        ResetLink {
            text: SettingsModel.timeZone.was
            resetText: SettingsModel.timeZone.resetText
            onClicked: SettingsModel.timeZone.reset()
        }
    }
    SwitchRow {
        setting: SettingsModel.cameraDays
        text: Words.cameraDays
        help: Words.cameraDaysHelp
    }
    SwitchRow {
        setting: SettingsModel.datesFromNames
        text: Words.datesFromNames
        help: Words.datesFromNamesHelp
    }
}
