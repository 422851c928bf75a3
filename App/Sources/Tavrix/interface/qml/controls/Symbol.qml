import QtQuick
import QtQuick.Window

// A symbol of our own in one colour.
Image {
    id: symbol

    property string name
    property color color: Theme.text
    property int size: 16

    width: size
    height: size
    sourceSize: Qt.size(size * Screen.devicePixelRatio, size * Screen.devicePixelRatio)
    source: name === "" ? "" : "image://symbols/" + name + "/" + color.toString().substring(1)
    Accessible.ignored: true
}
