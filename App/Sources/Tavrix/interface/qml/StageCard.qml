import QtQuick
import Tavrix

// One stage of a transfer and how far it is.
Rectangle {
    id: card

    property string title
    property string text
    property bool isAtWork

    height: 56
    radius: Theme.corner
    color: Theme.surface
    border.width: 1
    border.color: isAtWork ? Theme.mark : Theme.line
    Accessible.role: Accessible.StaticText
    Accessible.name: title + ": " + text

    Column {
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - 24
        spacing: 3

        Text {
            width: parent.width
            text: card.title
            font.pixelSize: Theme.bodyText
            font.weight: card.isAtWork ? Font.DemiBold : Font.Normal
            color: Theme.text
            elide: Text.ElideRight
            Accessible.ignored: true
        }
        Text {
            width: parent.width
            text: card.text
            font.pixelSize: 12
            color: Theme.secondText
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }
}
