import QtQuick

// A sentence that the user should see, with a mark of its weight.
Rectangle {
    id: notice

    property string title
    property string text
    property color tone: Theme.warn
    property string symbol: "warning"
    property color symbolColor: tone
    // Left free at the right.
    property real rightSpace: 16

    implicitHeight: column.implicitHeight + 24
    radius: Theme.corner
    color: Theme.surface
    border.width: 1
    border.color: tone
    Accessible.role: Accessible.AlertMessage
    Accessible.name: title === "" ? text : title + ". " + text

    Symbol {
        x: 14
        y: 14
        name: notice.symbol
        color: notice.symbolColor
    }
    Column {
        id: column
        x: 40
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - 40 - notice.rightSpace
        spacing: 2

        Text {
            width: parent.width
            visible: notice.title !== ""
            text: notice.title
            font.pixelSize: Theme.bodyText
            font.weight: Font.DemiBold
            color: notice.tone
            wrapMode: Text.WordWrap
            Accessible.ignored: true
        }
        Text {
            width: parent.width
            text: notice.text
            font.pixelSize: Theme.bodyText
            color: Theme.text
            wrapMode: Text.WordWrap
            Accessible.ignored: true
        }
    }
}
