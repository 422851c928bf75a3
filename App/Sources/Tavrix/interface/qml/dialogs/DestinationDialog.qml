import QtQuick.Dialogs
import Tavrix

// The dialog for the destination. In a file of its own, so that it costs nothing until it is wanted.
FolderDialog {
    title: Words.chooseDestinationTitle
    currentFolder: DestinationModel.startFolder
    onAccepted: DestinationModel.choose(selectedFolder)
}
