import QtQuick
import Tavrix

// The settings, in four sections.
Rectangle {
    color: Theme.ground

    Rectangle {
        width: 1
        height: parent.height
        color: Theme.line
    }
}
