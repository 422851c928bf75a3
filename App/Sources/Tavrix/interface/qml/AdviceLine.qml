import QtQuick
import Tavrix

// A line about the destination, with a mark if it is a warning.
Item {
    id: line

    property string text
    property int tone: DestinationModel.Quiet
    readonly property bool isQuiet: tone === DestinationModel.Quiet
    readonly property color ink: isQuiet ? Theme.secondText : tone === DestinationModel.Bad ? Theme.bad : Theme.warn

    implicitHeight: Math.max(16, words.implicitHeight)
    Accessible.role: isQuiet ? Accessible.StaticText : Accessible.AlertMessage
    Accessible.name: text

    Symbol {
        y: 1
        visible: !line.isQuiet
        name: "warning"
        size: 14
        color: line.ink
    }
    Text {
        id: words
        x: line.isQuiet ? 0 : 20
        width: parent.width - x
        text: line.text
        font.pixelSize: 12
        color: line.ink
        wrapMode: Text.Wrap
        maximumLineCount: 3
        elide: Text.ElideRight
        Accessible.ignored: true
    }
}
