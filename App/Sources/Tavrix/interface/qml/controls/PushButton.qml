import QtQuick
import QtQuick.Templates as T

// A button with a text; the one that leads on is filled with the accent colour.
T.Button {
    id: button

    property bool leading: false

    implicitWidth: Math.max(72, label.implicitWidth + 32)
    implicitHeight: Theme.control
    padding: 0
    font.pixelSize: Theme.bodyText
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.5
    Accessible.name: text
    Accessible.onPressAction: button.clicked()

    contentItem: Text {
        id: label
        text: button.text
        font.pixelSize: button.font.pixelSize
        font.weight: button.leading ? Font.DemiBold : Font.Normal
        color: button.leading ? Theme.accentText : Theme.text
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    background: Rectangle {
        radius: Theme.smallCorner
        color: button.leading ? (button.down ? Qt.darker(Theme.accent, 1.12) : Theme.accent)
                              : button.down ? Theme.pressed : button.hovered ? Theme.hover : Theme.surface
        border.width: button.leading ? 0 : 1
        border.color: Theme.line

        FocusRing {
            visible: button.visualFocus
        }
    }
}
