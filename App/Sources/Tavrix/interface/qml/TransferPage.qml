import QtQuick
import QtQuick.Controls.Basic as C
import Tavrix

// A transfer under way.
Item {
    id: page

    signal stopWanted

    Item {
        id: head
        anchors.horizontalCenter: parent.horizontalCenter
        y: 28
        width: Math.min(880, parent.width - 64)
        height: 64

        // The picture that was copied last.
        Rectangle {
            id: picture
            width: 64
            height: 64
            radius: Theme.smallCorner
            color: Theme.tile

            Symbol {
                anchors.centerIn: parent
                visible: !view.isShown
                name: "photo"
                color: Theme.mark
                size: 24
            }
            PictureView {
                id: view
                anchors.fill: parent
                radius: parent.radius
                pictures: RunPicture.pictures
            }
        }
        Text {
            x: 80
            y: 6
            width: stopButton.x - x - 24
            text: ProgressModel.title
            font.pixelSize: Theme.titleText
            font.weight: Font.DemiBold
            color: Theme.text
            elide: Text.ElideRight
        }
        Text {
            x: 80
            y: 36
            width: stopButton.x - x - 24
            text: ProgressModel.destination
            font.pixelSize: Theme.bodyText
            color: Theme.secondText
            elide: Text.ElideMiddle
        }
        PushButton {
            id: stopButton
            anchors.right: parent.right
            y: 6
            text: Words.cancelTransfer
            enabled: !ProgressModel.isStopping
            onClicked: page.stopWanted()
        }
    }
    Column {
        id: body
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: head.bottom
        anchors.topMargin: 24
        width: head.width
        spacing: 0

        ProgressBar {
            width: parent.width
            implicitHeight: 10
            fraction: ProgressModel.fraction
        }
        Item {
            width: parent.width
            height: 32

            Row {
                anchors.verticalCenter: parent.verticalCenter
                spacing: 24

                Text {
                    text: ProgressModel.files
                    font.pixelSize: Theme.nameText
                    font.weight: Font.DemiBold
                    color: Theme.text
                }
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    text: ProgressModel.bytes
                    font.pixelSize: Theme.bodyText
                    color: Theme.secondText
                }
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    text: ProgressModel.speed
                    font.pixelSize: Theme.bodyText
                    color: Theme.secondText
                }
            }
            Text {
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                text: ProgressModel.timeLeft
                font.pixelSize: Theme.bodyText
                color: Theme.text
            }
        }
        Text {
            width: parent.width
            height: 20
            text: ProgressModel.current
            font.pixelSize: Theme.bodyText
            color: Theme.secondText
            elide: Text.ElideMiddle
        }
        Item {
            width: 1
            height: 12
        }
        Notice {
            width: parent.width
            visible: ProgressModel.waitText !== ""
            title: Words.transferWaits
            text: ProgressModel.waitText
        }
        Item {
            width: 1
            height: ProgressModel.waitText === "" ? 0 : 12
        }
        Row {
            width: parent.width
            spacing: 12

            Repeater {
                model: ProgressModel.stageTitles

                StageCard {
                    required property int index
                    required property string modelData

                    width: (body.width - 36) / 4
                    title: modelData
                    text: ProgressModel.stageTexts[index]
                    isAtWork: ProgressModel.stagesAtWork[index]
                }
            }
        }
    }
    RunFolders {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: body.bottom
        anchors.topMargin: 16
        width: head.width
        height: Math.min(implicitHeight, page.height - y - 24)
    }
}
