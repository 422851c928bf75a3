import QtQuick
import Tavrix

// The format of the files and where they lie in their folder.
InspectorSection {
    title: Words.formatSection
    forgotten: Words.formatForgotten

    SwitchRow {
        setting: SettingsModel.photoJPEG
        text: Words.jpegSwitch
        help: Words.jpegHelp
    }
    NumberRow {
        setting: SettingsModel.jpegQuality
        title: Words.jpegQuality
        help: Words.jpegQualityHelp
    }
    SwitchRow {
        setting: SettingsModel.videoH264
        text: Words.h264Switch
        help: Words.h264Help
    }
    SwitchRow {
        setting: SettingsModel.separatePhotoVideo
        text: Words.subfoldersSwitch
        help: Words.subfoldersHelp
    }
    SwitchRow {
        setting: SettingsModel.flattenSingleKind
        text: Words.flattenSwitch
        help: Words.flattenHelp
        indent: 16
    }
    SwitchRow {
        setting: SettingsModel.packAsZip
        text: Words.zipSwitch
        help: Words.zipHelp
    }
    Column {
        width: parent.width
        spacing: 8
        visible: SettingsModel.packing.isUsed

        SegmentedPicker {
            choices: SettingsModel.packing.titles
            current: SettingsModel.packing.current
            onPicked: index => SettingsModel.packing.pick(index)
            Accessible.name: Words.zipTitle
        }
        OptionHelp {
            width: parent.width
            text: Words.zipTakesAll
        }
    }
}
