import QtQuick
import Tavrix

// The source, the division into folders, the search, and the buttons for the columns.
Rectangle {
    id: bar

    property int sidebarWidth: 0
    property bool showsSidebar
    property bool showsInspector
    signal sidebarToggled
    signal inspectorToggled

    implicitHeight: 52
    color: Theme.surface

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.line
    }
    Row {
        id: sourceRow
        x: 16
        height: parent.height - 1
        spacing: 8

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: WindowModel.isPhone ? "phone" : "folder"
            color: Theme.secondText
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, 160)
            text: WindowModel.sourceName
            font.pixelSize: Theme.bodyText
            font.weight: Font.DemiBold
            color: Theme.text
            elide: Text.ElideRight
        }
    }
    SegmentedPicker {
        anchors.centerIn: parent
        visible: WindowModel.page === WindowModel.BrowsePage
        choices: [Words.layoutDays, Words.layoutMonths, Words.layoutYears, Words.layoutEvents, Words.layoutTrips]
        current: WindowModel.layout
        onPicked: index => WindowModel.layout = index
        Accessible.name: Words.layoutName
    }
    Row {
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4
        visible: WindowModel.page === WindowModel.BrowsePage

        TextBox {
            width: 200
            symbol: "search"
            placeholderText: Words.searchHint
            text: WindowModel.searchText
            onTextEdited: WindowModel.searchText = text
        }
    }
}
