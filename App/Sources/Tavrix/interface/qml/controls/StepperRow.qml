import QtQuick
import QtQuick.Templates as T
import Tavrix

// A small whole number: its name, a field between two buttons, one line of help, and the way back
// to its first value.
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
        height: Math.max(24, label.implicitHeight)

        OptionTitle {
            id: label
            anchors.left: parent.left
            anchors.right: buttons.left
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            text: row.title
        }
        Row {
            id: buttons
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 4

            IconButton {
                width: 24
                height: 24
                symbol: "minus"
                text: Words.less
                enabled: row.setting !== null && row.setting.value > 0
                onClicked: row.setting.move(-1)
                Accessible.description: row.title
            }
            NumberField {
                setting: row.setting
                Accessible.name: row.title
                Accessible.description: row.setting ? row.setting.fullText : ""
            }
            IconButton {
                width: 24
                height: 24
                symbol: "plus"
                text: Words.more
                onClicked: row.setting.move(1)
                Accessible.description: row.title
            }
        }
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
