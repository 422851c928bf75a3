import QtQuick
import Tavrix

// The sources that can be opened.
PopupMenu {
    id: menu

    signal folderWanted

    MenuLine {
        text: Words.followPhone
        enabled: !WindowModel.isPhone
        onTriggered: WindowModel.openPhone()
    }
    MenuLine {
        text: Words.openFolder
        shortcutText: "Ctrl+O"
        onTriggered: menu.folderWanted()
    }
}
