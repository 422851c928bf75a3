import QtQuick
import QtQuick.Templates as T

// A text that does something when it is pressed.
T.AbstractButton {
    id: link

    implicitWidth: label.implicitWidth
    implicitHeight: 20
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: link.clicked()

    contentItem: Text {
        id: label
        text: link.text
        font.pixelSize: 12
        font.underline: true
        color: link.hovered ? Theme.text : Theme.secondText
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideMiddle
    }
    background: Item {
        FocusRing {
            visible: link.visualFocus
        }
    }
}
