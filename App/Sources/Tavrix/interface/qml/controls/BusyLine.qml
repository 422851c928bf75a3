import QtQuick

// A thin bar that moves while something is computed; it appears only if that takes a while.
Item {
    id: busy

    property bool isBusy

    height: 2
    clip: true
    visible: false
    onIsBusyChanged: isBusy ? delay.restart() : stop()

    function stop() {
        delay.stop();
        visible = false;
    }

    Timer {
        id: delay
        interval: 150
        onTriggered: busy.visible = true
    }
    Rectangle {
        id: piece
        width: parent.width / 4
        height: parent.height
        color: Theme.mark

        NumberAnimation on x {
            running: busy.visible && Theme.motion > 0
            from: -piece.width
            to: busy.width
            duration: 1400
            loops: Animation.Infinite
        }
    }
}
