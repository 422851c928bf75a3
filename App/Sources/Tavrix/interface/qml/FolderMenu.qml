import QtQuick
import Tavrix

// The actions on the selected folders.
PopupMenu {
    id: menu

    signal renameRequested
    signal openRequested
    signal explanationRequested

    MenuLine {
        text: Words.viewShots
        shortcutText: Words.enterKey
        enabled: FolderListModel.selectedCount <= 1
        onTriggered: menu.openRequested()
    }
    MenuLine {
        text: FolderActions.areChecked ? Words.uncheckFolders : Words.checkFolders
        shortcutText: Words.spaceKey
        onTriggered: FolderActions.toggleChecks()
    }
    MenuLine {
        text: Words.renameFolder
        shortcutText: "F2"
        enabled: FolderListModel.selectedCount <= 1
        onTriggered: menu.renameRequested()
    }
    MenuLine {
        text: Words.mergeFolders
        shortcutText: "Ctrl+M"
        enabled: FolderActions.canMerge
        onTriggered: FolderActions.merge()
    }
    MenuLine {
        text: Words.takeApart
        enabled: FolderActions.canTakeApart
        onTriggered: FolderActions.takeApart()
    }
    MenuLine {
        text: Words.undoMerge
        shortcutText: "Ctrl+Z"
        enabled: FolderActions.canUndoMerge
        onTriggered: FolderActions.undoMerge()
    }
    MenuLine {
        text: Words.whyBoundary
        enabled: FolderActions.hasBoundary
        onTriggered: menu.explanationRequested()
    }
    MenuLine {
        text: Words.copyName
        shortcutText: "Ctrl+C"
        onTriggered: FolderActions.copyNames()
    }
}
