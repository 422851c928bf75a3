import QtQuick
import QtQuick.Controls.Basic as C
import Tavrix

// The folders of a transfer with their own bars; the running one stays in view.
Rectangle {
    implicitHeight: list.contentHeight + 14
    radius: Theme.corner
    color: Theme.surface
    border.width: 1
    border.color: Theme.line

    ListView {
        id: list
        anchors.fill: parent
        anchors.margins: 1
        anchors.topMargin: 6
        anchors.bottomMargin: 6
        clip: true
        model: RunFolderList
        reuseItems: true
        boundsBehavior: Flickable.StopAtBounds
        Accessible.role: Accessible.List
        Accessible.name: Words.foldersOfRun

        function follow() {
            if (!moving && RunFolderList.current >= 0)
                positionViewAtIndex(RunFolderList.current, ListView.Contain);
        }
        Connections {
            target: RunFolderList
            function onCurrentChanged() {
                list.follow();
            }
        }
        Component.onCompleted: follow()

        C.ScrollBar.vertical: ThinScrollBar {}
        delegate: Item {
            id: row

            required property int index
            required property string name
            required property string counts
            required property real fraction
            required property bool isDone
            readonly property bool isCurrent: index === RunFolderList.current

            width: ListView.view.width
            height: 36
            Accessible.role: Accessible.ListItem
            Accessible.name: name + ", " + counts

            Rectangle {
                anchors.fill: parent
                anchors.leftMargin: 6
                anchors.rightMargin: 6
                visible: row.isCurrent
                radius: Theme.smallCorner
                color: Theme.hover
            }
            Symbol {
                x: 16
                anchors.verticalCenter: parent.verticalCenter
                name: row.isDone ? "check" : "folder"
                color: row.isDone ? Theme.good : Theme.mark
            }
            Text {
                x: 44
                width: bar.x - x - 16
                height: parent.height
                text: row.name
                font.pixelSize: Theme.bodyText
                font.weight: row.isCurrent ? Font.DemiBold : Font.Normal
                color: Theme.text
                verticalAlignment: Text.AlignVCenter
                elide: Text.ElideRight
                Accessible.ignored: true
            }
            ProgressBar {
                id: bar
                anchors.right: countsText.left
                anchors.rightMargin: 16
                anchors.verticalCenter: parent.verticalCenter
                width: 160
                implicitHeight: 4
                fraction: row.fraction
                Accessible.ignored: true
            }
            Text {
                id: countsText
                anchors.right: parent.right
                anchors.rightMargin: 20
                width: 104
                height: parent.height
                text: row.counts
                font.pixelSize: 12
                color: Theme.secondText
                horizontalAlignment: Text.AlignRight
                verticalAlignment: Text.AlignVCenter
                Accessible.ignored: true
            }
        }
    }
}
