import QtQuick
import Tavrix

// The title above the folders of a month or a year.
Item {
    property alias title: label.text

    implicitHeight: 40

    Text {
        id: label
        anchors.left: parent.left
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 8
        font.pixelSize: Theme.bodyText
        font.weight: Font.DemiBold
        color: Theme.secondText
    }
}
