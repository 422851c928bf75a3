import QtQuick
import Tavrix

// The destination, what a transfer would do, and the button that starts it.
Rectangle {
    id: bar

    signal chooseWanted

    function editPath() {
        field.forceActiveFocus();
        field.selectAll();
    }

    implicitHeight: column.y + column.implicitHeight + 12
    color: Theme.surface

    Rectangle {
        width: parent.width
        height: 1
        color: Theme.line
    }
    Text {
        id: label
        x: 16
        y: 13
        height: Theme.control
        text: Words.destinationLabel
        font.pixelSize: Theme.bodyText
        color: Theme.secondText
        verticalAlignment: Text.AlignVCenter
    }
    TextBox {
        id: field
        anchors.left: label.right
        anchors.leftMargin: 12
        anchors.right: chooseButton.left
        anchors.rightMargin: 8
        y: 13
        symbol: "folder"
        placeholderText: Words.destinationHint
        text: DestinationModel.path
        Accessible.name: Words.destinationHint
        Accessible.description: DestinationModel.status
        onAccepted: DestinationModel.path = text
        onActiveFocusChanged: if (!activeFocus) DestinationModel.path = text

        // Typing breaks the binding of the text.
        Connections {
            target: DestinationModel
            function onChanged() {
                if (!field.activeFocus)
                    field.text = DestinationModel.path;
            }
        }
        DropArea {
            anchors.fill: parent
            keys: ["text/uri-list"]
            onDropped: drop => {
                if (drop.hasUrls)
                    DestinationModel.choose(drop.urls[0]);
            }
        }
    }
    PushButton {
        id: chooseButton
        anchors.right: effect.left
        anchors.rightMargin: effect.text === "" ? 12 : 24
        y: 13
        text: Words.chooseFolder
        onClicked: bar.chooseWanted()
    }
    Text {
        id: effect
        anchors.right: button.left
        anchors.rightMargin: 16
        y: 13
        height: Theme.control
        text: DestinationModel.effect
        font.pixelSize: Theme.bodyText
        color: Theme.secondText
        verticalAlignment: Text.AlignVCenter
    }
    PushButton {
        id: button
        anchors.right: parent.right
        anchors.rightMargin: 16
        y: 13
        leading: true
        text: DestinationModel.buttonText
        onClicked: DestinationModel.transfer()
    }
    Column {
        id: column
        x: field.x
        y: 13 + Theme.control + 6
        width: bar.width - x - 16
        spacing: 4

        QuietLink {
            visible: DestinationModel.lastText !== ""
            text: DestinationModel.lastText
            onClicked: DestinationModel.chooseLast()
        }
        AdviceLine {
            width: parent.width
            visible: text !== ""
            text: DestinationModel.status
            tone: DestinationModel.tone
        }
        Repeater {
            model: DestinationModel.warnings

            AdviceLine {
                required property string modelData

                width: column.width
                text: modelData
                tone: DestinationModel.Warning
            }
        }
        QuietLink {
            x: 20
            visible: DestinationModel.canKeepNames
            text: Words.keepNames
            onClicked: DestinationModel.keepNames()
        }
    }
}
