import QtQuick
import QtQuick.Templates as T

// The tooltip with a text that is cut.
T.ToolTip {
    id: tip

    delay: 600
    implicitWidth: Math.min(360, contentItem.implicitWidth + 20)
    implicitHeight: contentItem.implicitHeight + 12
    padding: 6
    leftPadding: 10
    rightPadding: 10
    margins: 8

    contentItem: Text {
        text: tip.text
        font.pixelSize: Theme.bodyText
        color: Theme.text
        wrapMode: Text.Wrap
    }
    background: Rectangle {
        radius: Theme.smallCorner
        color: Theme.surface
        border.width: 1
        border.color: Theme.line
    }
}
