import QtQuick
import QtQuick.Templates as T

// A scroll bar that is as wide as its margin allows.
T.ScrollBar {
    id: bar

    implicitWidth: 12
    implicitHeight: 12
    padding: 3
    minimumSize: 0.04
    visible: size < 1
    // The keyboard scrolls what it shows.
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: Theme.mark
        opacity: bar.pressed ? 0.9 : bar.hovered ? 0.7 : 0.45
    }
}
