import QtQuick
import QtQuick.Templates as T
import Tavrix

// A shot in full size over the whole window, with its facts at the side.
T.Popup {
    id: page

    parent: T.Overlay.overlay
    width: parent ? parent.width : 0
    height: parent ? parent.height : 0
    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose
    visible: ShotViewer.isOpen

    background: Rectangle {
        color: Theme.ground
    }
    contentItem: FocusScope {
        focus: true
        Accessible.role: Accessible.Pane
        Accessible.name: ShotViewer.name

        Keys.onPressed: event => {
            event.accepted = true;
            if (event.key === Qt.Key_Left || event.key === Qt.Key_Up || event.key === Qt.Key_PageUp)
                ShotViewer.showEarlier();
            else if (event.key === Qt.Key_Right || event.key === Qt.Key_Down || event.key === Qt.Key_PageDown)
                ShotViewer.showLater();
            else if (event.key === Qt.Key_Escape || event.key === Qt.Key_Space || event.key === Qt.Key_Backspace)
                ShotViewer.close();
            else
                event.accepted = false;
        }

        Item {
            id: stage
            anchors.left: parent.left
            anchors.right: side.left
            anchors.top: parent.top
            anchors.bottom: parent.bottom

            Symbol {
                anchors.centerIn: parent
                visible: !picture.isShown
                name: ShotViewer.isFilm ? "video" : "photo"
                color: Theme.mark
                size: 48
            }
            PictureView {
                id: picture
                anchors.fill: parent
                anchors.margins: 16
                anchors.leftMargin: 60
                anchors.rightMargin: 60
                isWhole: true
                pictures: ShotViewer.isOpen ? ShotViewer.pictures : null
            }
            IconButton {
                x: 16
                anchors.verticalCenter: parent.verticalCenter
                symbol: "chevron-left"
                text: Words.earlierShot
                enabled: ShotViewer.hasEarlier
                onClicked: ShotViewer.showEarlier()
            }
            IconButton {
                anchors.right: parent.right
                anchors.rightMargin: 16
                anchors.verticalCenter: parent.verticalCenter
                symbol: "chevron-right"
                text: Words.laterShot
                enabled: ShotViewer.hasLater
                onClicked: ShotViewer.showLater()
            }
        }
        ShotFacts {
            id: side
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.bottom: parent.bottom
            width: 304
        }
    }
}
