import QtQuick
import Tavrix

// A number: its name and field, a slider, one line of help, and the way back to its first value.
Column {
    id: row

    property NumberSetting setting: null
    property string title
    property string help

    width: parent ? parent.width : 240
    spacing: 4
    visible: setting !== null && setting.isUsed

    Item {
        width: parent.width
        height: Math.max(field.height, label.implicitHeight)

        OptionTitle {
            id: label
            anchors.left: parent.left
            anchors.right: field.left
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            text: row.title
        }
        NumberField {
            id: field
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            setting: row.setting
            Accessible.name: row.title
            Accessible.description: row.setting ? row.setting.fullText : ""
        }
    }
    SliderBar {
        width: parent.width
        from: row.setting ? row.setting.from : 0
        to: row.setting ? row.setting.to : 1
        stepSize: row.setting ? row.setting.step : 0
        value: row.setting ? row.setting.value : 0
        onMoved: row.setting.value = value
        Accessible.name: row.title
        Accessible.description: row.setting ? row.setting.fullText + ". " + row.help : ""
    }
    OptionHelp {
        width: parent.width
        text: row.help
    }
    ResetLink {
        text: row.setting ? row.setting.was : ""
        resetText: row.setting ? row.setting.resetText : ""
        onClicked: row.setting.reset()
    }
}
