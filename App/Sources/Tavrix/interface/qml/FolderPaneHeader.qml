import QtQuick
import QtQuick.Templates as T
import Tavrix

// The line above the folders.
Item {
    id: header

    implicitHeight: 48

    T.AbstractButton {
        id: all
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        width: 28
        height: 28
        focusPolicy: Qt.StrongFocus
        Accessible.role: Accessible.CheckBox
        Accessible.name: ListHeader.text
        Accessible.checkable: true
        Accessible.checked: ListHeader.inclusion === ListHeader.All
        Accessible.onPressAction: all.clicked()
        onClicked: ListHeader.toggleAll()

        contentItem: Item {
            CheckCircle {
                anchors.centerIn: parent
                checked: ListHeader.inclusion === ListHeader.All
                partly: ListHeader.inclusion === ListHeader.Some
            }
        }
        background: FocusRing {
            visible: all.visualFocus
            anchors.margins: 0
            radius: 14
        }
    }
    Text {
        anchors.left: all.right
        anchors.leftMargin: 8
        anchors.right: checks.left
        anchors.rightMargin: 8
        height: parent.height
        text: ListHeader.text
        font.pixelSize: Theme.bodyText
        color: Theme.text
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    Row {
        id: checks
        anchors.right: tools.left
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        spacing: 0
        visible: header.width > 620
        width: visible ? implicitWidth : 0

        QuietButton {
            text: Words.checkAll
            enabled: FolderListModel.count > 0 && ListHeader.inclusion !== ListHeader.All
            onClicked: ListHeader.includeAll()
        }
        QuietButton {
            text: Words.checkNone
            enabled: FolderListModel.count > 0 && ListHeader.inclusion !== ListHeader.None
            onClicked: ListHeader.includeNone()
        }
    }
    Row {
        id: tools
        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        spacing: 16

        SmallSwitch {
            // The options beside a narrow list have it, too.
            visible: header.width > 430
            text: Words.onlyNew
            help: Words.onlyNewHelp + " " + Words.onlyNewDeleted
            enabled: ListHeader.canBeOnlyNew
            checked: ListHeader.onlyNew
            onToggled: ListHeader.onlyNew = checked
        }
        Row {
            spacing: 0

            IconButton {
                symbol: "grid"
                text: Words.showAsGrid
                checked: !FolderListModel.isList
                onClicked: FolderListModel.isList = false
            }
            IconButton {
                symbol: "list"
                text: Words.showAsList
                checked: FolderListModel.isList
                onClicked: FolderListModel.isList = true
            }
        }
    }
}
