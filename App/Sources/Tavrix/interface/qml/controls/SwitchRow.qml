import QtQuick
import QtQuick.Templates as T
import Tavrix

// A switch with its name and one line of help. The whole row switches it.
T.Switch {
    id: row

    function change() {
        toggle();
        toggled();
    }

    property SwitchSetting setting: null
    property string help
    property int indent: 0

    width: parent ? parent.width : implicitWidth
    implicitWidth: 240
    implicitHeight: Math.max(20, contentItem.implicitHeight)
    visible: setting !== null && setting.isUsed
    checked: setting !== null && setting.value
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.name: text
    Accessible.description: help
    Accessible.onPressAction: row.change()
    Accessible.onToggleAction: row.change()
    onToggled: {
        setting.value = checked;
        checked = Qt.binding(() => row.setting !== null && row.setting.value);
    }

    indicator: Rectangle {
        x: row.width - width
        y: 0
        width: 34
        height: 20
        radius: 10
        color: row.checked ? Theme.text : Theme.surface
        border.width: row.checked ? 0 : 1.5
        border.color: row.hovered ? Theme.secondText : Theme.mark

        Rectangle {
            x: row.checked ? parent.width - width - 3 : 3
            anchors.verticalCenter: parent.verticalCenter
            width: 14
            height: width
            radius: width / 2
            color: row.checked ? Theme.surface : Theme.mark

            Behavior on x {
                NumberAnimation {
                    duration: Theme.motion
                }
            }
        }
        FocusRing {
            radius: 13
            visible: row.visualFocus
        }
    }
    contentItem: Column {
        leftPadding: row.indent
        spacing: 4

        OptionTitle {
            width: row.width - row.indent - 46
            text: row.text
            topPadding: 1
        }
        OptionHelp {
            width: row.width - row.indent
            text: row.help
        }
    }
}
