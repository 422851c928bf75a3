import QtQuick
import QtQuick.Templates as T

// A button that is only a text.
T.AbstractButton {
    id: button

    implicitWidth: label.implicitWidth + 16
    implicitHeight: Theme.control
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: button.clicked()

    contentItem: Text {
        id: label
        text: button.text
        font.pixelSize: Theme.bodyText
        color: button.enabled ? Theme.secondText : Theme.mark
        opacity: button.enabled ? 1 : 0.6
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
    background: Rectangle {
        radius: Theme.smallCorner
        color: button.down ? Theme.pressed : button.hovered && button.enabled ? Theme.hover : "transparent"

        FocusRing {
            visible: button.visualFocus
        }
    }
}
