import QtQuick
import QtQuick.Templates as T

// A slider. Its user gives it a name.
T.Slider {
    id: slider

    implicitWidth: 200
    implicitHeight: 20
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    snapMode: T.Slider.SnapAlways
    Accessible.role: Accessible.Slider

    background: Rectangle {
        y: (slider.height - height) / 2
        width: slider.width
        height: 4
        radius: 2
        color: Theme.line

        Rectangle {
            width: 8 + slider.visualPosition * (parent.width - 16)
            height: parent.height
            radius: 2
            color: Theme.mark
        }
    }
    handle: Rectangle {
        x: slider.visualPosition * (slider.width - width)
        y: (slider.height - height) / 2
        width: 16
        height: 16
        radius: 8
        color: slider.pressed ? Theme.pressed : Theme.surface
        border.width: 1.5
        border.color: slider.pressed || slider.hovered ? Theme.text : Theme.secondText

        FocusRing {
            radius: 11
            visible: slider.visualFocus
        }
    }
}
