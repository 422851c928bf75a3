import QtQuick
import Tavrix

// Years, months and places.
Rectangle {
    color: Theme.ground

    Rectangle {
        anchors.right: parent.right
        width: 1
        height: parent.height
        color: Theme.line
    }
}
