import QtQuick
import QtQuick.Templates as T
import Tavrix

// A field for the number of a setting, with its unit. Enter takes the number, Escape drops it; the
// arrow keys move it by steps.
T.TextField {
    id: field

    property NumberSetting setting: null

    implicitWidth: Math.max(64, Math.ceil(metrics.width) + unitText.implicitWidth + 24)
    implicitHeight: 24
    leftPadding: 8
    rightPadding: unitText.width + 12
    font.pixelSize: Theme.bodyText
    color: Theme.text
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentText
    verticalAlignment: TextInput.AlignVCenter
    horizontalAlignment: TextInput.AlignRight
    selectByMouse: true
    maximumLength: 12
    text: setting ? setting.text : ""
    Accessible.role: Accessible.EditableText
    onEditingFinished: take()
    onActiveFocusChanged: if (activeFocus) selectAll()
    Keys.onEscapePressed: event => {
        event.accepted = text !== setting.text;
        show();
    }
    Keys.onUpPressed: setting.move(1)
    Keys.onDownPressed: setting.move(-1)

    function take() {
        if (text !== setting.text)
            setting.type(text);
        show();
    }
    function show() {
        text = Qt.binding(() => field.setting ? field.setting.text : "");
    }

    TextMetrics {
        id: metrics
        font: field.font
        text: field.text
    }
    background: Rectangle {
        radius: Theme.smallCorner
        color: Theme.surface
        border.width: field.activeFocus ? 2 : 1
        border.color: field.activeFocus ? Theme.accent : field.hovered ? Theme.mark : Theme.line

        Text {
            id: unitText
            anchors.right: parent.right
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            text: field.setting ? field.setting.unit : ""
            font: field.font
            color: Theme.secondText
        }
    }
}
