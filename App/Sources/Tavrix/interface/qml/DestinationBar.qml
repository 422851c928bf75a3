import QtQuick
import Tavrix

// The destination, what a transfer would do, and the button that starts it.
Rectangle {
    implicitHeight: 60
    color: Theme.surface

    Rectangle {
        width: parent.width
        height: 1
        color: Theme.line
    }
}
