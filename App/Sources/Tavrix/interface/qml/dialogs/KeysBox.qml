import QtQuick
import QtQuick.Templates as T
import Tavrix

// The keys that the window uses.
T.Popup {
    id: box

    readonly property var rows: [["Ctrl+F", Words.keySearch], ["Ctrl+1…5", Words.keyLayouts], ["F9  Ctrl+I", Words.keyColumns], ["Ctrl+A  Ctrl+Shift+A", Words.keyCheckAll], [Words.spaceKey, Words.keySpace], [Words.enterKey, Words.keyEnter], ["F2", Words.keyRename], ["Ctrl+M  Ctrl+Z", Words.keyMerge], ["Ctrl+C", Words.keyCopy], ["Ctrl+O", Words.keySource], ["Ctrl+D", Words.keyDestination], ["Ctrl+" + Words.enterKey, Words.keyTransfer], ["Esc", Words.keyBack]]

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    modal: true
    focus: true
    width: 480
    padding: 24
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside

    background: Rectangle {
        radius: Theme.corner
        color: Theme.surface
        border.width: 1
        border.color: Theme.line
    }
    T.Overlay.modal: Rectangle {
        color: Qt.rgba(0, 0, 0, 0.35)
    }
    contentItem: Column {
        spacing: 8

        Text {
            bottomPadding: 8
            text: Words.keysTitle
            font.pixelSize: Theme.nameText
            font.weight: Font.DemiBold
            color: Theme.text
        }
        Repeater {
            model: box.rows

            Item {
                id: row

                required property var modelData

                width: parent.width
                height: 20
                Accessible.role: Accessible.StaticText
                Accessible.name: modelData[0] + ": " + modelData[1]

                Text {
                    width: 152
                    height: parent.height
                    text: row.modelData[0]
                    font.pixelSize: Theme.bodyText
                    color: Theme.secondText
                    verticalAlignment: Text.AlignVCenter
                }
                Text {
                    x: 160
                    width: parent.width - x
                    height: parent.height
                    text: row.modelData[1]
                    font.pixelSize: Theme.bodyText
                    color: Theme.text
                    verticalAlignment: Text.AlignVCenter
                }
            }
        }
    }
}
