import QtQuick
import Tavrix

// A folder in the list.
Rectangle {
    id: card

    required property int index
    required property string name
    required property string period
    required property string counts
    required property string newFiles
    required property bool isChecked

    height: 76
    radius: Theme.corner
    color: Theme.surface
    border.width: 1
    border.color: Theme.line

    Column {
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Text {
            text: card.name
            font.pixelSize: Theme.nameText
            font.weight: Font.DemiBold
            color: Theme.text
        }
        Text {
            text: card.period + " · " + card.counts
            font.pixelSize: Theme.bodyText
            color: Theme.secondText
        }
        Text {
            text: card.newFiles === "" ? Words.inPlace : card.newFiles
            font.pixelSize: Theme.bodyText
            color: card.newFiles === "" ? Theme.good : Theme.secondText
        }
    }
}
