import QtQuick
import QtQuick.Templates as T
import Tavrix

// The source, the division into folders, the search, and the buttons for the columns.
Rectangle {
    id: bar

    property bool showsSidebar
    property bool showsInspector
    readonly property bool isBrowsing: WindowModel.page === WindowModel.BrowsePage
    // What is left for each side beside the picker in the middle.
    readonly property real sideWidth: (width - picker.width) / 2 - 24
    signal sidebarToggled
    signal inspectorToggled

    function openFolder() {
        dialog.active = true;
        dialog.item.open();
    }
    function openSourceMenu() {
        sourceMenu.popup(source, 0, source.height + 4);
    }
    function search() {
        searchField.forceActiveFocus();
        searchField.selectAll();
    }

    implicitHeight: 52
    color: Theme.surface

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.line
    }
    IconButton {
        id: sidebarButton
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        visible: bar.isBrowsing
        symbol: "sidebar"
        text: Words.toggleSidebar
        checked: bar.showsSidebar
        onClicked: bar.sidebarToggled()
    }
    T.AbstractButton {
        id: source
        x: sidebarButton.visible ? sidebarButton.x + sidebarButton.width + 4 : 12
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(sourceRow.implicitWidth + 20, bar.sideWidth - x + 12)
        height: Theme.control
        focusPolicy: Qt.StrongFocus
        hoverEnabled: true
        text: WindowModel.sourceName
        Accessible.role: Accessible.ButtonMenu
        Accessible.name: Words.chooseSource + ", " + text
        Accessible.onPressAction: source.clicked()
        onClicked: bar.openSourceMenu()

        contentItem: Item {
            Row {
                id: sourceRow
                x: 10
                height: parent.height
                spacing: 8

                Symbol {
                    anchors.verticalCenter: parent.verticalCenter
                    name: WindowModel.isPhone ? "phone" : "folder"
                    color: Theme.secondText
                }
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    width: Math.min(implicitWidth, bar.sideWidth - source.x - 56)
                    text: source.text
                    font.pixelSize: Theme.bodyText
                    font.weight: Font.DemiBold
                    color: Theme.text
                    elide: Text.ElideRight
                }
                Symbol {
                    anchors.verticalCenter: parent.verticalCenter
                    name: "chevron-down"
                    size: 12
                    color: Theme.secondText
                }
            }
        }
        background: Rectangle {
            radius: Theme.smallCorner
            color: source.down ? Theme.pressed : source.hovered ? Theme.hover : "transparent"

            FocusRing {
                visible: source.visualFocus
            }
        }
    }
    SegmentedPicker {
        id: picker
        anchors.centerIn: parent
        visible: bar.isBrowsing
        choices: [Words.layoutDays, Words.layoutMonths, Words.layoutYears, Words.layoutEvents, Words.layoutTrips]
        current: WindowModel.layout
        onPicked: index => WindowModel.layout = index
        Accessible.name: Words.layoutName
    }
    SearchField {
        id: searchField
        anchors.right: inspectorButton.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(240, bar.sideWidth - 44)
        visible: bar.isBrowsing
    }
    IconButton {
        id: inspectorButton
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        visible: bar.isBrowsing
        symbol: "inspector"
        text: Words.toggleInspector
        checked: bar.showsInspector
        onClicked: bar.inspectorToggled()
    }
    SourceMenu {
        id: sourceMenu
        onFolderWanted: bar.openFolder()
    }
    Loader {
        id: dialog
        active: false
        source: "SourceDialog.qml"
    }
}
