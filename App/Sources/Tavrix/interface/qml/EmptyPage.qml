import QtQuick
import Tavrix

// The window without a source: waiting for a phone, or reading one.
Item {
    id: page

    signal folderWanted

    Column {
        anchors.horizontalCenter: parent.horizontalCenter
        y: Math.max(24, (parent.height - implicitHeight) * 0.42)
        width: Math.min(520, parent.width - 64)
        spacing: 0

        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 216
            height: 108
            sourceSize: Qt.size(width * Screen.devicePixelRatio, height * Screen.devicePixelRatio)
            source: "image://symbols/" + (DeviceModel.isFolder ? "drawn-folder" : DeviceModel.steps.length === 0 || DeviceModel.steps[0] === DeviceModel.Done ? "drawn-cable" : "drawn-unplugged") + "/" + Theme.mark.toString().substring(1)
            Accessible.ignored: true
        }
        Text {
            width: parent.width
            topPadding: 24
            text: DeviceModel.title
            font.pixelSize: Theme.titleText
            font.weight: Font.DemiBold
            color: Theme.text
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
        }
        Text {
            width: parent.width
            topPadding: 8
            visible: text !== ""
            text: DeviceModel.text
            font.pixelSize: Theme.bodyText
            lineHeight: 1.3
            color: DeviceModel.isFault ? Theme.text : Theme.secondText
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
        }
        WaitingSteps {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: DeviceModel.steps.length > 0
        }
        Item {
            width: 1
            height: 24
        }
        ProgressBar {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(400, parent.width)
            visible: DeviceModel.fraction >= 0
            fraction: DeviceModel.fraction
            isDone: false
        }
        BusyLine {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(400, parent.width)
            isBusy: DeviceModel.isBusy && DeviceModel.fraction < 0
        }
        Text {
            width: parent.width
            topPadding: 10
            visible: text !== ""
            text: DeviceModel.counts
            font.pixelSize: Theme.bodyText
            color: Theme.text
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
        }
        Text {
            width: parent.width
            topPadding: 4
            visible: DeviceModel.fraction >= 0
            text: DeviceModel.pace === "" ? " " : DeviceModel.pace
            font.pixelSize: 12
            color: Theme.secondText
            horizontalAlignment: Text.AlignHCenter
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            topPadding: 20
            spacing: 8

            PushButton {
                visible: DeviceModel.canStop
                text: Words.stopReading
                onClicked: DeviceModel.stop()
            }
            PushButton {
                visible: DeviceModel.retryText !== ""
                leading: true
                text: DeviceModel.retryText
                onClicked: DeviceModel.retry()
            }
            PushButton {
                visible: DeviceModel.isFolder && !DeviceModel.isBusy
                text: Words.waitForPhone
                onClicked: SourceMenuModel.openAnyPhone()
            }
            PushButton {
                visible: !DeviceModel.isBusy
                text: Words.openFolder
                onClicked: page.folderWanted()
            }
        }
        Text {
            width: parent.width
            topPadding: 12
            text: DeviceModel.isBusy ? DeviceModel.note : Words.orDropFolder
            font.pixelSize: 12
            color: Theme.secondText
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
        }
    }

    // What a screen reader announces when the state changes.
    Item {
        Accessible.role: Accessible.StatusBar
        Accessible.name: DeviceModel.title + ". " + DeviceModel.text
    }
}
