import QtQuick
import QtQuick.Controls.Basic as C
import QtQuick.Templates as T

// A button with a symbol; its text is its name and its tooltip.
T.AbstractButton {
    id: button

    property string symbol

    implicitWidth: Theme.control
    implicitHeight: Theme.control
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    opacity: enabled ? 1 : 0.4
    Accessible.name: text
    Accessible.onPressAction: button.clicked()
    C.ToolTip.visible: hovered && text !== ""
    C.ToolTip.text: text
    C.ToolTip.delay: 600

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            name: button.symbol
            color: button.checked ? Theme.text : Theme.secondText
        }
    }
    background: Rectangle {
        radius: Theme.smallCorner
        color: button.down ? Theme.pressed : button.checked || button.hovered ? Theme.hover : "transparent"

        FocusRing {
            visible: button.visualFocus
        }
    }
}
