import QtQuick
import Tavrix

// A folder as a card: its pictures, its name, and what a transfer would do with it. Cards are
// used again for other folders while the list is scrolled.
Rectangle {
    id: card

    required property int row
    required property rect box
    required property string name
    required property string period
    required property string counts
    required property string effect
    required property bool isInPlace
    required property string note
    required property string more
    required property string symbol
    required property var pictures
    required property bool isChecked
    required property bool isSelected
    required property bool isCurrent
    required property string description

    property bool wantsPictures: true
    property bool showsFocus
    // The height of everything below the pictures.
    readonly property int textHeight: 118

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
    radius: Theme.corner
    color: isSelected ? Theme.selected : Theme.surface
    border.width: isCurrent && showsFocus ? 2 : 1
    border.color: isCurrent && showsFocus ? Theme.accent : isSelected ? Theme.mark : mouse.containsMouse ? Theme.mark : Theme.line

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
    Accessible.onPressAction: card.toggled()
    Accessible.onToggleAction: card.toggled()

    MouseArea {
        id: mouse
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onPressed: event => {
            if (event.button === Qt.RightButton)
                card.menuRequested();
        }
        onClicked: event => {
            if (event.button === Qt.RightButton)
                return;
            if (event.x < 48 && event.y < 48)
                card.toggled();
            else
                card.clicked(event.modifiers);
        }
        onDoubleClicked: event => {
            if (event.button === Qt.LeftButton && (event.x >= 48 || event.y >= 48))
                card.opened();
        }
    }
    Rectangle {
        id: mosaic
        x: 12
        y: 12
        width: card.width - 24
        height: card.height - 12 - card.textHeight
        radius: Theme.smallCorner
        color: Theme.tile
        opacity: card.isChecked ? 1 : 0.55

        Symbol {
            anchors.centerIn: parent
            visible: !strip.isShown
            name: card.symbol
            color: Theme.mark
            size: 24
        }
        PictureView {
            id: strip
            anchors.fill: parent
            radius: mosaic.radius
            pictures: card.wantsPictures ? card.pictures : null
        }
    }
    CheckCircle {
        x: 20
        y: 20
        size: 22
        checked: card.isChecked
    }
    CardLabel {
        anchors.right: mosaic.right
        anchors.bottom: mosaic.bottom
        anchors.margins: 6
        text: strip.isShown ? card.more : ""
    }
    CardLabel {
        anchors.right: mosaic.right
        anchors.top: mosaic.top
        anchors.margins: 6
        mostWidth: mosaic.width - 48
        text: card.note
    }
    Text {
        id: nameText
        objectName: "folderName"
        x: 12
        y: mosaic.y + mosaic.height + 8
        width: card.width - 24
        text: card.name
        font.pixelSize: Theme.nameText
        font.weight: Font.DemiBold
        lineHeight: 20
        lineHeightMode: Text.FixedHeight
        color: card.isChecked ? Theme.text : Theme.secondText
        wrapMode: Text.Wrap
        maximumLineCount: 2
        elide: Text.ElideRight
    }
    Text {
        id: periodText
        x: 12
        y: nameText.y + nameText.height + 2
        width: card.width - 24
        height: 18
        text: card.period
        font.pixelSize: Theme.bodyText
        color: Theme.secondText
        elide: Text.ElideRight
    }
    Text {
        x: 12
        y: periodText.y + 18
        width: card.width - 24
        height: 18
        text: card.counts
        font.pixelSize: Theme.bodyText
        color: Theme.secondText
        elide: Text.ElideRight
    }
    Text {
        id: effectText
        x: 12
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 10
        width: card.width - 24
        height: 18
        leftPadding: card.isInPlace ? 20 : 0
        text: card.effect
        font.pixelSize: Theme.bodyText
        color: card.isInPlace ? Theme.good : card.isChecked ? Theme.text : Theme.secondText
        elide: Text.ElideRight

        Symbol {
            y: 1
            visible: card.isInPlace
            name: "check"
            color: Theme.good
        }
    }
}
