import QtQuick
import QtQuick.Templates as T
import Tavrix

// The title of a section that can be folded away.
T.AbstractButton {
    id: header

    property bool expanded: true
    property int level: 0

    implicitWidth: 200
    implicitHeight: Theme.control
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: expanded ? Words.outlineOpen : Words.outlineClosed
    Accessible.onPressAction: header.clicked()

    contentItem: Item {
        Text {
            anchors.left: parent.left
            anchors.right: chevron.left
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            text: header.text
            font.pixelSize: Theme.bodyText
            font.weight: Font.DemiBold
            color: Theme.text
            elide: Text.ElideRight
        }
        Symbol {
            id: chevron
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            size: 12
            name: "chevron-down"
            color: header.hovered ? Theme.text : Theme.mark
            rotation: header.expanded ? 0 : -90

            Behavior on rotation {
                NumberAnimation {
                    duration: Theme.motion
                }
            }
        }
    }
    background: Item {
        FocusRing {
            anchors.leftMargin: -6
            anchors.rightMargin: -6
            anchors.topMargin: 0
            anchors.bottomMargin: 0
            visible: header.visualFocus
        }
    }
}
