import QtQuick
import QtQuick.Templates as T

// A field for one line of text, with a symbol before it if it has one.
T.TextField {
    id: field

    property string symbol

    implicitWidth: 200
    implicitHeight: Theme.control
    leftPadding: symbol === "" ? 10 : 32
    rightPadding: 10
    font.pixelSize: Theme.bodyText
    color: Theme.text
    placeholderTextColor: Theme.secondText
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentText
    verticalAlignment: TextInput.AlignVCenter
    selectByMouse: true
    Accessible.name: placeholderText

    background: Rectangle {
        radius: Theme.smallCorner
        color: Theme.surface
        border.width: field.activeFocus ? 2 : 1
        border.color: field.activeFocus ? Theme.accent : Theme.line

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            x: 8
            name: field.symbol
            color: Theme.mark
        }
        Text {
            x: field.leftPadding
            width: field.width - field.leftPadding - field.rightPadding
            height: parent.height
            visible: field.text === "" && field.preeditText === ""
            text: field.placeholderText
            font: field.font
            color: Theme.mark
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
        }
    }
}
