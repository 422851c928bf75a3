import QtQuick
import QtQuick.Templates as T

// Shows the earlier value of a changed setting; a click brings it back.
T.AbstractButton {
    id: link

    property string resetText

    implicitWidth: label.implicitWidth + 18
    implicitHeight: 18
    visible: text !== ""
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.role: Accessible.Button
    Accessible.name: resetText
    Accessible.onPressAction: link.clicked()

    contentItem: Item {
        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            size: 12
            name: "reset"
            color: label.color
        }
        Text {
            id: label
            x: 18
            anchors.verticalCenter: parent.verticalCenter
            text: link.hovered || link.visualFocus ? link.resetText : link.text
            font.pixelSize: 12
            font.underline: link.hovered
            color: link.hovered ? Theme.text : Theme.secondText
        }
    }
    background: Item {
        FocusRing {
            visible: link.visualFocus
        }
    }
}
