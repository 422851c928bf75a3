import QtQuick
import Tavrix

// How shots are divided in the present layout.
InspectorSection {
    title: Words.howSection

    OptionHelp {
        width: parent.width
        visible: SettingsModel.home.isUsed
        text: Words.whyTrips
    }
    NumberRow {
        setting: SettingsModel.eventGapHours
        title: Words.eventGap
        help: Words.eventGapHelp
    }
    SwitchRow {
        setting: SettingsModel.splitByDistance
        text: Words.splitByDistance
        help: Words.splitByDistanceHelp
    }
    NumberRow {
        setting: SettingsModel.eventGapKm
        title: Words.eventDistance
        help: Words.eventDistanceHelp
    }
    Column {
        width: parent.width
        spacing: 8
        visible: SettingsModel.home.isUsed

        OptionTitle {
            text: Words.homeTitle
        }
        Picker {
            width: parent.width
            visible: SettingsModel.home.current >= 0
            setting: SettingsModel.home
            Accessible.name: Words.homeTitle
            Accessible.description: Words.homeHelp
        }
        OptionHelp {
            width: parent.width
            text: SettingsModel.homeNote
            color: Theme.warn
        }
        LinkButton {
            visible: SettingsModel.isHomeManual
            text: Words.homeAutomatic
            onClicked: SettingsModel.forgetHome()
        }
    }
    SwitchRow {
        setting: SettingsModel.homePeriods
        text: Words.homePeriods
        help: Words.homePeriodsHelp
    }
    OptionHelp {
        width: parent.width
        visible: SettingsModel.homePeriods.isUsed && text !== ""
        text: SettingsModel.homesText
    }
    Column {
        width: parent.width
        spacing: 4
        visible: SettingsModel.homeMonths.isUsed

        Item {
            width: parent.width
            height: 28

            OptionTitle {
                anchors.verticalCenter: parent.verticalCenter
                text: Words.homeMonths
            }
            Picker {
                anchors.right: parent.right
                width: 128
                setting: SettingsModel.homeMonths
                Accessible.name: Words.homeMonths
                Accessible.description: Words.homeMonthsHelp
            }
        }
        OptionHelp {
            width: parent.width
            text: Words.homeMonthsHelp
        }
    }
    NumberRow {
        setting: SettingsModel.tripDistanceKm
        title: Words.tripDistance
        help: Words.tripDistanceHelp
    }
    NumberRow {
        setting: SettingsModel.tripCityKm
        title: Words.tripCity
        help: Words.tripCityHelp
    }
    StepperRow {
        setting: SettingsModel.tripMinDays
        title: Words.tripDays
        help: Words.tripDaysHelp
    }
    NumberRow {
        setting: SettingsModel.tripMaxGapHours
        title: Words.tripGap
        help: Words.tripGapHelp
    }
    NumberRow {
        setting: SettingsModel.placeRadiusKm
        title: Words.placeRadius
        help: Words.placeRadiusHelp
    }
}
