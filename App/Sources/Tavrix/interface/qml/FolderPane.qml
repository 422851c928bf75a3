import QtQuick
import Tavrix

// The folders: the line above them, the list, and what stands in its place when it is empty.
FocusScope {
    id: pane

    signal opened(int row)

    // Act on the current folder.
    function rename() {
        scroll.rename(FolderListModel.currentRow);
    }
    function openMenu() {
        scroll.openMenuAtCurrent();
    }
    function explain() {
        scroll.explain();
    }

    FolderPaneHeader {
        id: header
        width: parent.width
    }
    Rectangle {
        id: line
        y: header.height
        width: parent.width
        height: 1
        color: Theme.line
    }
    // How folders are chosen, until the user has read it.
    Item {
        id: tip
        anchors.top: line.bottom
        width: parent.width
        height: visible ? notice.height + 16 : 0
        visible: ViewChoices.wantsTip && FolderListModel.count > 0

        Notice {
            id: notice
            x: 16
            y: 12
            width: parent.width - 32
            text: Words.tipFolders
            rightSpace: 40
            symbol: "info"
            tone: Theme.line
            symbolColor: Theme.secondText
            Accessible.role: Accessible.StaticText
        }
        IconButton {
            anchors.right: notice.right
            anchors.rightMargin: 6
            anchors.verticalCenter: notice.verticalCenter
            symbol: "close"
            text: Words.close
            onClicked: ViewChoices.dismissTip()
        }
    }
    // A merge that the program suggests.
    Item {
        id: suggestion
        anchors.top: tip.bottom
        width: parent.width
        height: visible ? question.height + 16 : 0
        visible: FolderSuggestion.text !== "" && FolderListModel.count > 0

        Notice {
            id: question
            x: 16
            y: 12
            width: parent.width - 32
            text: FolderSuggestion.text
            rightSpace: answers.width + 20
            symbol: "info"
            tone: Theme.line
            symbolColor: Theme.secondText
            Accessible.role: Accessible.StaticText
        }
        Row {
            id: answers
            anchors.right: question.right
            anchors.rightMargin: 8
            anchors.verticalCenter: question.verticalCenter
            spacing: 8

            PushButton {
                text: Words.mergeSuggested
                onClicked: FolderSuggestion.accept()
            }
            PushButton {
                text: Words.keepApart
                onClicked: FolderSuggestion.reject()
            }
        }
    }
    FolderScroll {
        id: scroll
        anchors.top: suggestion.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        focus: true
        onOpened: row => pane.opened(row)
    }
    BusyLine {
        y: header.height
        width: parent.width
        isBusy: WindowModel.isComputing
    }
    Column {
        anchors.centerIn: scroll
        spacing: 16
        visible: ListHeader.emptyText !== ""

        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: ListHeader.emptyText
            font.pixelSize: Theme.nameText
            font.weight: Font.DemiBold
            color: Theme.secondText
        }
        PushButton {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: ListHeader.isNarrowed
            text: Words.showAll
            onClicked: ListHeader.showAll()
        }
    }
    // Offers to undo the merge just made.
    Rectangle {
        anchors.horizontalCenter: scroll.horizontalCenter
        anchors.bottom: scroll.bottom
        anchors.bottomMargin: 16
        width: undoRow.width + 20
        height: 48
        radius: Theme.corner
        color: Theme.surface
        border.width: 1
        border.color: Theme.mark
        visible: FolderActions.canUndoMerge

        Row {
            id: undoRow
            x: 16
            height: parent.height
            spacing: 8

            Text {
                height: parent.height
                rightPadding: 8
                text: Words.foldersMergedNow
                font.pixelSize: Theme.bodyText
                color: Theme.text
                verticalAlignment: Text.AlignVCenter
            }
            PushButton {
                anchors.verticalCenter: parent.verticalCenter
                text: Words.undo
                onClicked: FolderActions.undoMerge()
            }
            IconButton {
                anchors.verticalCenter: parent.verticalCenter
                symbol: "close"
                text: Words.close
                onClicked: FolderActions.keepMerge()
            }
        }
    }
    Shortcut {
        sequence: "Ctrl+A"
        enabled: pane.visible && !scroll.renames
        onActivated: ListHeader.includeAll()
    }
    Shortcut {
        sequence: "Ctrl+Shift+A"
        enabled: pane.visible && !scroll.renames
        onActivated: ListHeader.includeNone()
    }
    Shortcut {
        sequence: "Ctrl+M"
        enabled: pane.visible && FolderActions.canMerge
        onActivated: FolderActions.merge()
    }
    Shortcut {
        sequence: "Ctrl+Z"
        enabled: pane.visible && FolderActions.canUndoMerge && !scroll.renames
        onActivated: FolderActions.undoMerge()
    }
    Shortcut {
        sequence: "Ctrl+C"
        enabled: scroll.activeFocus && !scroll.renames && FolderActions.hasFolders
        onActivated: FolderActions.copyNames()
    }
}
