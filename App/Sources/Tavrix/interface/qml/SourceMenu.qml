import QtQml
import QtQuick
import Tavrix

// The sources that can be opened: the phones on the cable, and a folder.
PopupMenu {
    id: menu

    signal folderWanted

    MenuLine {
        id: anyPhone
        text: Words.followPhone
        enabled: SourceMenuModel.count === 0 && !WindowModel.isPhone
        onTriggered: SourceMenuModel.openAnyPhone()
    }
    MenuLine {
        text: Words.openFolder
        shortcutText: "Ctrl+O"
        onTriggered: menu.folderWanted()
    }
    Instantiator {
        model: SourceMenuModel
        delegate: MenuLine {
            required property int index
            required property string name
            required property string stateText
            required property bool isCurrent

            text: isCurrent ? name : name + " — " + stateText
            onTriggered: SourceMenuModel.openPhone(index)
        }
        onObjectAdded: (index, object) => menu.insertItem(index, object)
        onObjectRemoved: (index, object) => menu.removeItem(object)
    }
}
