import QtQuick
import QtQuick.Controls.Basic as C
import QtQuick.Templates as T
import Tavrix

// Years, months and places. Arrow keys move the selection; left and right fold.
Rectangle {
    color: Theme.ground

    ListView {
        id: list

        // False from a click until the keyboard is used or moves away.
        property bool byKeyboard: true

        anchors.fill: parent
        anchors.rightMargin: 1
        topMargin: 8
        bottomMargin: 8
        clip: true
        activeFocusOnTab: true
        onActiveFocusChanged: if (!activeFocus) byKeyboard = true
        boundsBehavior: Flickable.StopAtBounds
        model: OutlineModel
        highlightMoveDuration: 0
        highlightFollowsCurrentItem: false
        Accessible.role: Accessible.List
        Accessible.name: Words.outlineName
        Keys.onUpPressed: go(currentIndex - 1)
        Keys.onDownPressed: go(currentIndex + 1)
        Keys.onLeftPressed: go(OutlineModel.collapse(currentIndex))
        Keys.onRightPressed: go(OutlineModel.expand(currentIndex))
        Keys.onSpacePressed: OutlineModel.toggle(currentIndex)
        Keys.onReturnPressed: OutlineModel.toggle(currentIndex)
        Keys.onPressed: event => {
            if (event.key === Qt.Key_Home || event.key === Qt.Key_End) {
                go(event.key === Qt.Key_Home ? 0 : count - 1);
                event.accepted = true;
            }
        }
        Component.onCompleted: currentIndex = OutlineModel.current

        // Moves the keyboard to a row, and selects it unless it is a title.
        function go(row) {
            if (row < 0 || row >= count || row === currentIndex)
                return;
            byKeyboard = true;
            currentIndex = row;
            positionViewAtIndex(row, ListView.Contain);
            if (!currentItem.isTitle)
                OutlineModel.choose(row);
        }

        Connections {
            target: OutlineModel
            function onCurrentChanged() {
                if (OutlineModel.current >= 0 && !list.activeFocus)
                    list.currentIndex = OutlineModel.current;
            }
        }
        C.ScrollBar.vertical: ThinScrollBar {}

        delegate: T.AbstractButton {
            id: row

            required property int index
            required property string title
            required property string files
            required property string spoken
            required property int level
            required property bool isTitle
            required property bool canExpand
            required property bool isExpanded

            readonly property bool isSelected: index === OutlineModel.current && !isTitle

            width: ListView.view.width
            height: isTitle ? 40 : 28
            focusPolicy: Qt.ClickFocus
            hoverEnabled: true
            text: title
            Accessible.role: Accessible.ListItem
            Accessible.name: spoken
            Accessible.selectable: !isTitle
            Accessible.selected: isSelected
            Accessible.onPressAction: row.clicked()
            onClicked: {
                list.byKeyboard = false;
                list.currentIndex = index;
                OutlineModel.choose(index);
            }

            Rectangle {
                anchors.fill: parent
                anchors.leftMargin: 8
                anchors.rightMargin: 12
                anchors.topMargin: row.isTitle ? 12 : 0
                radius: Theme.smallCorner
                color: row.isSelected ? Theme.selected : row.hovered ? Theme.hover : "transparent"
                border.width: row.visualFocus || (row.activeFocus && list.byKeyboard) ? 2 : 0
                border.color: Theme.accent
            }
            T.AbstractButton {
                id: chevron
                x: 8 + Math.max(0, row.level - 1) * 16
                y: row.isTitle ? 12 : 0
                width: 24
                height: 28
                visible: row.canExpand
                focusPolicy: Qt.NoFocus
                Accessible.ignored: true
                Accessible.onPressAction: chevron.clicked()
                onClicked: OutlineModel.toggle(row.index)

                contentItem: Item {
                    Symbol {
                        anchors.centerIn: parent
                        size: 12
                        name: "chevron-down"
                        color: Theme.mark
                        rotation: row.isExpanded ? 0 : -90
                    }
                }
            }
            Text {
                anchors.left: parent.left
                anchors.leftMargin: row.level === 0 && !row.isTitle ? 16 : 34 + Math.max(0, row.level - 1) * 16
                anchors.right: count.left
                anchors.rightMargin: 8
                y: row.isTitle ? 12 : 0
                height: 28
                text: row.title
                font.pixelSize: row.isTitle ? 12 : Theme.bodyText
                font.weight: row.isTitle || row.isSelected ? Font.DemiBold : Font.Normal
                color: row.isTitle ? Theme.secondText : Theme.text
                verticalAlignment: Text.AlignVCenter
                elide: Text.ElideRight
            }
            Text {
                id: count
                anchors.right: parent.right
                anchors.rightMargin: 20
                height: row.height
                text: row.files
                font.pixelSize: 12
                color: Theme.secondText
                verticalAlignment: Text.AlignVCenter
            }
        }
    }
    Rectangle {
        anchors.right: parent.right
        width: 1
        height: parent.height
        color: Theme.line
    }
}
