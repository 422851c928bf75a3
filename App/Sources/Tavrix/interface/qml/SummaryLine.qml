import QtQuick
import Tavrix

// A line of the summary: a title, a number, a reason, a file or a note.
Item {
    id: row

    required property int index
    required property int kind
    required property string line
    required property string aside
    required property string detail
    required property int depth
    readonly property bool isTitle: kind === SummaryModel.Title
    readonly property bool isFile: kind === SummaryModel.File
    readonly property bool isReason: kind === SummaryModel.Reason
    readonly property bool isNumber: kind === SummaryModel.Number

    implicitHeight: label.implicitHeight + (isTitle ? (index === 0 ? 12 : 28) : isFile ? 4 : 8)
    Accessible.role: isTitle ? Accessible.Heading : Accessible.ListItem
    Accessible.name: [line, aside, detail].filter(part => part !== "").join(", ")

    Text {
        id: label
        x: row.isFile ? 24 : row.isNumber ? row.depth * 20 : 0
        anchors.bottom: parent.bottom
        anchors.bottomMargin: row.isTitle ? 8 : row.isFile ? 2 : 4
        width: row.isNumber || row.isReason ? aside.x - x - 12 : row.isFile ? Math.min(260, parent.width * 0.34) : parent.width
        text: row.line
        font.pixelSize: row.isTitle ? Theme.nameText : Theme.bodyText
        font.weight: row.isTitle || row.isReason || (row.isNumber && row.depth === 0) ? Font.DemiBold : Font.Normal
        color: row.isFile ? Theme.secondText : Theme.text
        wrapMode: row.isFile ? Text.NoWrap : Text.WordWrap
        elide: row.isFile ? Text.ElideMiddle : Text.ElideNone
        Accessible.ignored: true
    }
    Text {
        id: aside
        anchors.baseline: label.baseline
        x: row.isFile ? label.x + label.width + 16 : row.isNumber ? Math.min(parent.width, 380) - width : parent.width - width
        width: row.isFile ? Math.max(0, parent.width - x) : implicitWidth
        text: row.isFile && row.detail !== "" ? row.aside + " · " + row.detail : row.aside
        font.pixelSize: Theme.bodyText
        font.weight: label.font.weight
        color: row.isNumber ? Theme.text : Theme.secondText
        elide: Text.ElideMiddle
        Accessible.ignored: true
    }
}
