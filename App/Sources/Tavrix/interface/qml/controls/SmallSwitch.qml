import QtQuick
import QtQuick.Controls.Basic as C
import QtQuick.Templates as T

// A switch with its text before it.
T.Switch {
    id: control

    // A line of explanation, shown under the mouse and read by screen readers.
    property string help

    function change() {
        toggle();
        toggled();
    }

    implicitWidth: label.implicitWidth + 8 + 34
    implicitHeight: Theme.control
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.5
    Accessible.name: text
    Accessible.description: help
    C.ToolTip.visible: hovered && help !== ""
    C.ToolTip.text: help
    C.ToolTip.delay: 600
    Accessible.onPressAction: control.change()
    Accessible.onToggleAction: control.change()

    contentItem: Text {
        id: label
        text: control.text
        font.pixelSize: Theme.bodyText
        color: Theme.text
        verticalAlignment: Text.AlignVCenter
    }
    indicator: Rectangle {
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: 34
        height: 20
        radius: 10
        color: control.checked ? Theme.text : Theme.surface
        border.width: control.checked ? 0 : 1.5
        border.color: Theme.mark

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            x: control.checked ? parent.width - width - 3 : 3
            width: 14
            height: 14
            radius: 7
            color: control.checked ? Theme.surface : Theme.mark

            Behavior on x {
                NumberAnimation {
                    duration: Theme.motion
                }
            }
        }
        FocusRing {
            radius: 13
            visible: control.visualFocus
        }
    }
}
