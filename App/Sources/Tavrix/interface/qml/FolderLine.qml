import QtQuick
import Tavrix

// A folder as one line of the list.
Rectangle {
    id: line

    required property int row
    required property rect box
    required property string name
    required property string period
    required property string counts
    required property string effect
    required property bool isInPlace
    required property bool isChecked
    required property bool isSelected
    required property bool isCurrent
    required property string description

    property bool showsFocus
    readonly property bool isWide: width > 760

    // True if the mouse is over a name that is cut.
    readonly property bool wantsTip: mouse.containsMouse && nameText.truncated

    signal clicked(int modifiers)
    signal opened
    signal toggled
    signal menuRequested

    x: box.x
    y: box.y
    width: box.width
    height: box.height
    visible: row >= 0
    radius: Theme.smallCorner
    color: isSelected ? Theme.selected : mouse.containsMouse ? Theme.hover : "transparent"
    border.width: isCurrent && showsFocus ? 2 : 0
    border.color: Theme.accent

    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: description
    Accessible.checkable: true
    Accessible.checked: isChecked
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.focusable: true
    Accessible.focused: isCurrent && showsFocus
    Accessible.ignored: row < 0
    Accessible.onPressAction: line.toggled()
    Accessible.onToggleAction: line.toggled()

    MouseArea {
        id: mouse
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onPressed: event => {
            if (event.button === Qt.RightButton)
                line.menuRequested();
        }
        onClicked: event => {
            if (event.button === Qt.RightButton)
                return;
            if (event.x < 40)
                line.toggled();
            else
                line.clicked(event.modifiers);
        }
        onDoubleClicked: event => {
            if (event.button === Qt.LeftButton && event.x >= 40)
                line.opened();
        }
    }
    CheckCircle {
        x: 10
        anchors.verticalCenter: parent.verticalCenter
        checked: line.isChecked
    }
    Text {
        id: nameText
        objectName: "folderName"
        x: 42
        width: periodText.x - x - 16
        height: parent.height
        text: line.name
        font.pixelSize: Theme.bodyText
        font.weight: Font.DemiBold
        color: line.isChecked ? Theme.text : Theme.secondText
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    Text {
        id: periodText
        x: countsText.x - width
        width: line.isWide ? 200 : 0
        height: parent.height
        visible: line.isWide
        text: line.period
        font.pixelSize: Theme.bodyText
        color: Theme.secondText
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    Text {
        id: countsText
        x: effectText.x - width
        width: 136
        height: parent.height
        text: line.counts
        font.pixelSize: Theme.bodyText
        color: Theme.secondText
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    Text {
        id: effectText
        x: line.width - width - 12
        width: 148
        height: parent.height
        text: line.effect
        font.pixelSize: Theme.bodyText
        color: line.isInPlace ? Theme.good : line.isChecked ? Theme.text : Theme.secondText
        horizontalAlignment: Text.AlignRight
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
}
