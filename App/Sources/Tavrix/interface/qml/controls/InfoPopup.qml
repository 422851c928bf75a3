import QtQuick
import QtQuick.Templates as T

// A note that opens beside its button.
T.Popup {
    id: popup

    property var paragraphs: []
    // Where it opens in its parent; if negative, below or above it.
    property real top: -1

    width: 320
    implicitHeight: column.implicitHeight + 32
    padding: 16
    margins: 8
    onAboutToShow: y = top >= 0 ? top : PopupPlace.below(parent, implicitHeight)
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    contentItem: Column {
        id: column
        spacing: 8
        Accessible.role: Accessible.StaticText
        Accessible.name: popup.paragraphs.join(" ")

        Repeater {
            model: popup.paragraphs

            Text {
                required property string modelData

                width: column.width
                text: modelData
                font.pixelSize: Theme.bodyText
                lineHeight: 1.15
                color: Theme.text
                wrapMode: Text.Wrap
            }
        }
    }
    background: Rectangle {
        radius: Theme.corner
        color: Theme.surface
        border.width: 1
        border.color: Theme.line
    }
}
