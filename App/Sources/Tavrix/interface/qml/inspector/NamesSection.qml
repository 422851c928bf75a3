import QtQuick
import Tavrix

// The names of folders and files.
InspectorSection {
    title: Words.namesSection
    forgotten: Words.namesForgotten

    Column {
        width: parent.width
        spacing: 8

        OptionTitle {
            text: Words.templateTitle
        }
        Picker {
            width: parent.width
            setting: SettingsModel.nameTemplate
            Accessible.name: Words.templateTitle
            Accessible.description: SettingsModel.nameExample
        }
        OptionHelp {
            width: parent.width
            text: SettingsModel.nameExample
        }
    }
    SwitchRow {
        setting: SettingsModel.geocodingEnabled
        text: Words.placeNames
        help: Words.placeNamesHelp
    }
    SwitchRow {
        setting: SettingsModel.mergeDistricts
        text: Words.mergeDistricts
        help: Words.mergeDistrictsHelp
    }
    SwitchRow {
        setting: SettingsModel.mergeSameNames
        text: Words.mergeSameNames
        help: Words.mergeSameNamesHelp
    }
    SwitchRow {
        setting: SettingsModel.severalCities
        text: Words.severalCities
        help: Words.severalCitiesHelp
    }
    SwitchRow {
        setting: SettingsModel.wholeFolderDates
        text: Words.wholeFolderDates
        help: Words.wholeFolderDatesHelp
    }
    SwitchRow {
        setting: SettingsModel.continueFolders
        text: Words.continueFolders
        help: Words.continueFoldersHelp
    }
    Column {
        id: prefix

        readonly property PrefixSetting setting: SettingsModel.prefix

        width: parent.width
        spacing: 8

        OptionTitle {
            text: Words.prefixTitle
        }
        SegmentedPicker {
            choices: [Words.prefixNone, Words.prefixPhone, Words.prefixCustom]
            current: prefix.setting.mode
            onPicked: index => prefix.setting.pick(index)
            Accessible.name: Words.prefixTitle
        }
        Item {
            width: parent.width
            height: 32
            visible: prefix.setting.mode === PrefixSetting.Custom

            TextBox {
                anchors.left: parent.left
                anchors.right: done.left
                anchors.rightMargin: 8
                text: prefix.setting.draft
                placeholderText: Words.prefixDraft
                maximumLength: 80
                onTextEdited: prefix.setting.draft = text
                onAccepted: prefix.setting.take()
            }
            PushButton {
                id: done
                anchors.right: parent.right
                enabled: prefix.setting.isDraftNew
                text: Words.prefixDone
                onClicked: prefix.setting.take()
            }
        }
        OptionHelp {
            width: parent.width
            text: prefix.setting.example
            color: Theme.text
            elide: Text.ElideMiddle
            wrapMode: Text.NoWrap
        }
        OptionHelp {
            width: parent.width
            text: [Words.prefixNoneHelp, Words.prefixPhoneHelp, Words.prefixCustomHelp][prefix.setting.mode]
        }
    }
}
