import QtQuick
import Tavrix

// One section of the inspector: a title that folds it, its settings, and what is forgotten.
Column {
    id: section

    property string title
    property string forgotten
    property bool expanded: true
    default property alias settings: content.data

    width: parent ? parent.width : 240

    FoldHeader {
        width: parent.width
        height: 40
        text: section.title
        expanded: section.expanded
        onClicked: section.expanded = !section.expanded
    }
    Column {
        id: content
        width: parent.width
        spacing: 16
        visible: section.expanded
    }
    OptionHelp {
        width: parent.width
        topPadding: 16
        visible: section.expanded && text !== ""
        text: section.forgotten
        color: Theme.secondText
        font.italic: true
    }
    Item {
        width: 1
        height: section.expanded ? 16 : 0
    }
    Rectangle {
        width: parent.width
        height: 1
        color: Theme.line
    }
}
