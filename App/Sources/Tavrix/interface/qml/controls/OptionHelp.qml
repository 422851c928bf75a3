import QtQuick

// A quiet line below a control.
Text {
    font.pixelSize: 12
    color: Theme.secondText
    wrapMode: Text.Wrap
    lineHeight: 1.1
    visible: text !== ""
}
