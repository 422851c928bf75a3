import QtQuick
import Tavrix

// The list of folders.
Item {
    ListView {
        anchors.fill: parent
        anchors.margins: 16
        clip: true
        spacing: 12
        model: FolderListModel
        delegate: FolderCard {
            width: ListView.view.width
        }
    }
}
