import QtQuick
import Tavrix

// The three steps before a phone can be read, each ticked off once it is done.
Row {
    id: steps

    readonly property var names: [Words.stepPlug, Words.stepUnlock, Words.stepTrust]

    topPadding: 28
    spacing: 28

    Repeater {
        model: DeviceModel.steps

        Row {
            id: step

            required property int index
            required property int modelData
            readonly property bool isDone: modelData === DeviceModel.Done
            readonly property bool isNow: modelData === DeviceModel.Now

            spacing: 8
            Accessible.role: Accessible.CheckBox
            Accessible.name: steps.names[index]
            Accessible.checked: isDone

            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                width: 22
                height: 22
                radius: 11
                color: step.isDone ? Theme.good : "transparent"
                border.width: step.isDone ? 0 : step.isNow ? 2 : 1
                border.color: step.isNow ? Theme.text : Theme.mark

                Symbol {
                    anchors.centerIn: parent
                    visible: step.isDone
                    name: "check"
                    size: 14
                    color: Theme.ground
                }
                Text {
                    anchors.centerIn: parent
                    visible: !step.isDone
                    text: step.index + 1
                    font.pixelSize: 12
                    font.weight: step.isNow ? Font.DemiBold : Font.Normal
                    color: step.isNow ? Theme.text : Theme.secondText
                    Accessible.ignored: true
                }
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: steps.names[step.index]
                font.pixelSize: Theme.bodyText
                font.weight: step.isNow ? Font.DemiBold : Font.Normal
                color: step.isNow ? Theme.text : Theme.secondText
                Accessible.ignored: true
            }
        }
    }
}
