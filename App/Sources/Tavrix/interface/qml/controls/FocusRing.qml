import QtQuick

// The frame around what has the keyboard.
Rectangle {
    anchors.fill: parent
    anchors.margins: -3
    radius: Theme.smallCorner + 3
    color: "transparent"
    border.width: 2
    border.color: Theme.accent
}
