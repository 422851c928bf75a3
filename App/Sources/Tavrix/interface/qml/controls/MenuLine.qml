import QtQuick
import QtQuick.Templates as T

// A line of a menu. One that cannot be chosen now is left out.
T.MenuItem {
    id: line

    property string shortcutText

    implicitWidth: label.implicitWidth + (shortcutText === "" ? 0 : hint.implicitWidth + 32) + 24
    implicitHeight: visible ? 32 : 0
    height: implicitHeight
    visible: enabled
    padding: 0
    Accessible.name: text
    Accessible.onPressAction: line.triggered()

    contentItem: Item {
        Text {
            id: label
            x: 12
            height: parent.height
            text: line.text
            font.pixelSize: Theme.bodyText
            color: Theme.text
            verticalAlignment: Text.AlignVCenter
        }
        Text {
            id: hint
            anchors.right: parent.right
            anchors.rightMargin: 12
            height: parent.height
            text: line.shortcutText
            font.pixelSize: Theme.bodyText
            color: Theme.secondText
            verticalAlignment: Text.AlignVCenter
        }
    }
    background: Rectangle {
        radius: Theme.smallCorner
        color: line.highlighted ? Theme.hover : "transparent"
    }
}
