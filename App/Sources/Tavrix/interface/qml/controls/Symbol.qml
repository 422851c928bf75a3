import QtQuick
import QtQuick.Window

// A symbol of our own in one or two colours.
Image {
    id: symbol

    property string name
    property color color: Theme.text
    property color second: Theme.surface
    property int size: 16

    width: size
    height: size
    sourceSize: Qt.size(size * Screen.devicePixelRatio, size * Screen.devicePixelRatio)
    source: name === "" ? "" : "image://symbols/" + name + "/" + color.toString().substring(1) + "/" + second.toString().substring(1)
    Accessible.ignored: true
}
