import QtQuick
import Tavrix

// The title above the folders of a month or a year.
Rectangle {
    property alias title: label.text

    height: 44
    color: Theme.ground
    Accessible.role: Accessible.StaticText
    Accessible.name: title

    Text {
        id: label
        x: 16
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 10
        font.pixelSize: Theme.nameText
        font.weight: Font.DemiBold
        color: Theme.text
    }
}
