import QtQuick
import Tavrix

// What is known about the shot in full size.
Rectangle {
    id: facts

    color: Theme.surface

    Rectangle {
        width: 1
        height: parent.height
        color: Theme.line
    }
    Text {
        id: name
        objectName: "folderName"
        x: 16
        y: 16
        width: close.x - x - 8
        height: 32
        text: ShotViewer.name
        font.pixelSize: Theme.nameText
        font.weight: Font.DemiBold
        color: Theme.text
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideMiddle
    }
    IconButton {
        id: close
        anchors.right: parent.right
        anchors.rightMargin: 12
        y: 16
        symbol: "close"
        text: Words.close
        onClicked: ShotViewer.close()
    }
    Text {
        id: position
        x: 16
        y: 48
        text: ShotViewer.position
        font.pixelSize: Theme.bodyText
        color: Theme.secondText
    }
    Flickable {
        anchors.top: position.bottom
        anchors.topMargin: 16
        anchors.bottom: opening.top
        anchors.bottomMargin: 12
        width: parent.width
        contentHeight: rows.height
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        Column {
            id: rows
            x: 16
            width: parent.width - 32
            spacing: 16

            Repeater {
                model: ShotViewer.facts

                Column {
                    id: fact

                    required property var modelData

                    width: rows.width
                    spacing: 4
                    Accessible.role: Accessible.StaticText
                    Accessible.name: modelData.title + ": " + modelData.text

                    Text {
                        text: fact.modelData.title
                        font.pixelSize: Theme.smallText
                        color: Theme.secondText
                    }
                    Text {
                        width: parent.width
                        text: fact.modelData.text
                        font.pixelSize: Theme.bodyText
                        lineHeight: 1.15
                        color: Theme.text
                        wrapMode: Text.Wrap
                    }
                }
            }
        }
    }
    Column {
        id: opening
        x: 16
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 16
        width: parent.width - 32
        spacing: 8

        Text {
            width: parent.width
            visible: text !== ""
            text: ShotViewer.report
            font.pixelSize: Theme.bodyText
            color: ShotViewer.isFetching ? Theme.secondText : Theme.warn
            wrapMode: Text.Wrap
        }
        PushButton {
            width: parent.width
            text: Words.openOutside
            enabled: !ShotViewer.isFetching
            onClicked: ShotViewer.openOutside()
        }
    }
}
