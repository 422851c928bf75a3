import QtQuick
import Tavrix

// A shot of the opened folder. Tiles are used again for other shots while the page is scrolled.
Rectangle {
    id: tile

    required property int row
    required property rect box
    required property string name
    required property var pictures
    required property bool isLive
    required property bool isFilm
    required property bool isEdited
    required property bool isReduced
    required property bool isInPlace
    required property bool isCurrent
    required property string filmLength
    required property string description

    property bool wantsPictures: true
    property bool showsFocus

    signal clicked
    signal opened

    x: box.x
    y: box.y
    width: box.width
    height: box.height
    visible: row >= 0
    radius: 4
    color: Theme.tile

    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: description
    Accessible.focusable: true
    Accessible.focused: isCurrent && showsFocus
    Accessible.ignored: row < 0
    Accessible.onPressAction: tile.opened()

    Symbol {
        anchors.centerIn: parent
        visible: !picture.isShown
        name: tile.isFilm ? "video" : "photo"
        color: Theme.mark
        size: 24
    }
    PictureView {
        id: picture
        anchors.fill: parent
        radius: tile.radius
        pictures: tile.wantsPictures ? tile.pictures : null
    }
    // The marks of the shot.
    Rectangle {
        x: 6
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 6
        width: marks.width + 8
        height: 20
        radius: 4
        color: Theme.surface
        visible: tile.isLive || tile.isFilm || tile.isEdited || tile.isReduced

        Row {
            id: marks
            x: 4
            anchors.verticalCenter: parent.verticalCenter
            spacing: 4

            Symbol {
                visible: tile.isLive
                name: "live"
                size: 14
                color: Theme.text
            }
            Symbol {
                visible: tile.isFilm
                name: "video"
                size: 14
                color: Theme.text
            }
            Text {
                visible: text !== ""
                text: tile.filmLength
                font.pixelSize: Theme.smallText
                color: Theme.text
                verticalAlignment: Text.AlignVCenter
                height: 14
            }
            Symbol {
                visible: tile.isEdited
                name: "edited"
                size: 14
                color: Theme.text
            }
            Symbol {
                visible: tile.isReduced
                name: "reduced"
                size: 14
                color: Theme.warn
            }
        }
    }
    Rectangle {
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 6
        width: 20
        height: 20
        radius: 10
        color: Theme.surface
        visible: tile.isInPlace

        Symbol {
            anchors.centerIn: parent
            name: "check"
            size: 14
            color: Theme.good
        }
    }
    Rectangle {
        anchors.fill: parent
        anchors.margins: -1
        radius: tile.radius + 1
        color: "transparent"
        border.width: 3
        border.color: tile.showsFocus ? Theme.accent : Theme.mark
        visible: tile.isCurrent
    }
    MouseArea {
        anchors.fill: parent
        onClicked: tile.clicked()
        onDoubleClicked: tile.opened()
    }
}
