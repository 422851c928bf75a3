import QtQuick

// The name of a setting above its control.
Text {
    font.pixelSize: Theme.bodyText
    color: Theme.text
    wrapMode: Text.Wrap
}
