import QtQuick
import Tavrix

// A small text on the pictures of a card.
Rectangle {
    property alias text: label.text
    property int mostWidth: 200

    width: label.width + 12
    height: 20
    radius: 4
    color: Theme.surface
    visible: text !== ""

    Text {
        id: label
        x: 6
        width: Math.min(implicitWidth, parent.mostWidth - 12)
        height: parent.height
        font.pixelSize: Theme.smallText
        color: Theme.text
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
}
