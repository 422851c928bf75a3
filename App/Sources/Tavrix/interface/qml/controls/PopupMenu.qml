import QtQuick
import QtQuick.Templates as T

// A menu of a few lines.
T.Menu {
    id: menu

    implicitWidth: Math.max(200, contentWidth + leftPadding + rightPadding)
    implicitHeight: contentHeight + topPadding + bottomPadding
    padding: 4
    margins: 8
    overlap: 1

    delegate: MenuLine {}
    contentItem: ListView {
        implicitHeight: contentHeight
        implicitWidth: {
            let widest = 0;
            for (let i = 0; i < menu.count; ++i)
                widest = Math.max(widest, menu.itemAt(i) ? menu.itemAt(i).implicitWidth : 0);
            return widest;
        }
        model: menu.contentModel
        interactive: false
        currentIndex: menu.currentIndex
    }
    background: Rectangle {
        radius: Theme.corner
        color: Theme.surface
        border.width: 1
        border.color: Theme.line
    }
}
