import QtQuick
import QtQuick.Templates as T

// A choice of one among few, side by side. Arrow keys move the choice.
FocusScope {
    id: picker

    property var choices: []
    property int current: -1
    signal picked(int index)

    implicitWidth: row.implicitWidth + 4
    implicitHeight: Theme.control
    Accessible.role: Accessible.PageTabList
    Keys.onLeftPressed: if (current > 0) picked(current - 1)
    Keys.onRightPressed: if (current < choices.length - 1) picked(current + 1)

    Rectangle {
        anchors.fill: parent
        radius: Theme.smallCorner + 2
        color: Theme.hover
    }
    Row {
        id: row
        anchors.centerIn: parent

        Repeater {
            model: picker.choices

            T.AbstractButton {
                id: segment
                required property int index
                required property string modelData

                readonly property bool isCurrent: index === picker.current

                implicitWidth: label.implicitWidth + 24
                implicitHeight: Theme.control - 4
                focusPolicy: Qt.StrongFocus
                focus: isCurrent
                activeFocusOnTab: isCurrent
                checkable: false
                text: modelData
                onClicked: picker.picked(index)
                Accessible.role: Accessible.PageTab
                Accessible.name: text
                Accessible.checkable: true
                Accessible.checked: isCurrent
                Accessible.onPressAction: segment.clicked()

                contentItem: Text {
                    id: label
                    text: segment.text
                    font.pixelSize: Theme.bodyText
                    font.weight: segment.isCurrent ? Font.DemiBold : Font.Normal
                    color: segment.isCurrent ? Theme.text : Theme.secondText
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                }
                background: Rectangle {
                    radius: Theme.smallCorner
                    color: segment.isCurrent ? Theme.surface : segment.hovered ? Theme.pressed : "transparent"
                    border.width: segment.isCurrent ? 1 : 0
                    border.color: Theme.line

                    FocusRing {
                        visible: segment.visualFocus
                    }
                }
            }
        }
    }
}
