import QtQuick

// A bar that is filled as far as some work is done.
Rectangle {
    id: bar

    property real fraction: 0
    property bool isDone: fraction >= 1

    implicitHeight: 6
    radius: height / 2
    color: Theme.tile
    Accessible.role: Accessible.ProgressBar
    Accessible.name: Math.floor(bar.fraction * 100) + " %"

    Rectangle {
        width: Math.max(bar.fraction > 0 ? height : 0, parent.width * Math.min(1, bar.fraction))
        height: parent.height
        radius: height / 2
        color: bar.isDone ? Theme.good : Theme.secondText
    }
}
