import QtQuick
import QtQuick.Templates as T
import Tavrix

// The suggestions below the search field.
T.Popup {
    id: popup
    property alias list: list
    signal chosen(int row)

    height: Math.min(list.contentHeight, 32 * 9) + 8
    padding: 4
    closePolicy: T.Popup.NoAutoClose

    contentItem: ListView {
        id: list
        clip: true
        currentIndex: -1
        model: SearchSuggestions

        delegate: T.ItemDelegate {
            id: line
            required property int index
            required property string title
            required property string symbol
            required property string files

            width: ListView.view.width
            height: 32
            hoverEnabled: true
            Accessible.name: title + ", " + files
            Accessible.onPressAction: line.clicked()
            onClicked: popup.chosen(index)

            contentItem: Item {
                Symbol {
                    x: 8
                    anchors.verticalCenter: parent.verticalCenter
                    name: line.symbol
                    color: Theme.mark
                }
                Text {
                    x: 32
                    width: filesText.x - x - 12
                    height: parent.height
                    text: line.title
                    font.pixelSize: Theme.bodyText
                    color: Theme.text
                    verticalAlignment: Text.AlignVCenter
                    elide: Text.ElideRight
                }
                Text {
                    id: filesText
                    x: parent.width - width - 10
                    height: parent.height
                    text: line.files
                    font.pixelSize: Theme.bodyText
                    color: Theme.secondText
                    verticalAlignment: Text.AlignVCenter
                }
            }
            background: Rectangle {
                radius: Theme.smallCorner
                color: line.hovered || line.ListView.isCurrentItem ? Theme.hover : "transparent"
            }
        }
    }
    background: Rectangle {
        radius: Theme.corner
        color: Theme.surface
        border.width: 1
        border.color: Theme.line
    }
}
