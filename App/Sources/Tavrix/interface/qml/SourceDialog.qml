import QtQuick.Dialogs
import Tavrix

// The dialog for a folder, a card or a snapshot. In a file of its own, so that it costs nothing
// until it is wanted.
FolderDialog {
    title: Words.openFolder
    onAccepted: SourceMenuModel.openFolder(selectedFolder)
}
