import QtQuick
import QtQuick.Templates as T

// A question or message over the window: a title, a text and a row of buttons, of which the last
// one leads on. Escape is the same as closed().
T.Popup {
    id: box

    property string title
    property string text
    default property alias buttons: row.data
    signal refused

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(460, (parent ? parent.width : 460) - 48)
    height: column.implicitHeight + 48
    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose

    T.Overlay.modal: Rectangle {
        color: Theme.dark ? "#99000000" : "#59000000"
    }
    background: Rectangle {
        radius: Theme.corner + 4
        color: Theme.surface
        border.width: 1
        border.color: Theme.line
    }
    contentItem: FocusScope {
        focus: true
        Accessible.role: Accessible.Dialog
        Accessible.name: box.title
        Accessible.description: box.text
        Keys.onEscapePressed: box.refused()

        Column {
            id: column
            x: 24
            y: 24
            width: parent.width - 48
            spacing: 8

            Text {
                width: parent.width
                text: box.title
                font.pixelSize: Theme.nameText
                font.weight: Font.DemiBold
                color: Theme.text
                wrapMode: Text.WordWrap
            }
            Text {
                width: parent.width
                bottomPadding: 12
                text: box.text
                font.pixelSize: Theme.bodyText
                lineHeight: 1.25
                color: Theme.text
                wrapMode: Text.WordWrap
            }
            Row {
                id: row
                anchors.right: parent.right
                spacing: 8
            }
        }
    }
}
