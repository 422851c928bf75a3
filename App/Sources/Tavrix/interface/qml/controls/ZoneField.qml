import QtQuick
import QtQuick.Templates as T
import Tavrix

// A field for a time zone, which offers the zones that contain what is typed.
TextBox {
    id: field

    property TimeZoneSetting setting: null
    property bool isRefused: false
    property var offered: []

    implicitHeight: 28
    text: setting ? setting.text : ""
    onTextEdited: {
        isRefused = false;
        offered = setting.matching(text);
        list.currentIndex = 0;
        if (offered.length > 0)
            popup.open();
        else
            popup.close();
    }
    onEditingFinished: take(text)
    Keys.onDownPressed: list.incrementCurrentIndex()
    Keys.onUpPressed: list.decrementCurrentIndex()
    Keys.onReturnPressed: take(popup.opened ? offered[list.currentIndex] : text)
    Keys.onEnterPressed: take(popup.opened ? offered[list.currentIndex] : text)
    Keys.onEscapePressed: event => {
        event.accepted = popup.opened || text !== setting.text;
        popup.close();
        isRefused = false;
        show();
    }

    function take(zone) {
        popup.close();
        isRefused = zone !== setting.text && !setting.type(zone);
        if (!isRefused)
            show();
    }
    function show() {
        text = Qt.binding(() => field.setting ? field.setting.text : "");
    }

    T.Popup {
        id: popup
        width: field.width
        implicitHeight: Math.min(list.contentHeight + 8, 232)
        padding: 4
        margins: 8
        closePolicy: T.Popup.CloseOnPressOutsideParent
        onAboutToShow: y = PopupPlace.below(field, height)

        contentItem: ListView {
            id: list
            clip: true
            model: field.offered
            delegate: T.ItemDelegate {
                id: zone
                required property int index
                required property string modelData

                width: ListView.view.width
                height: 28
                text: modelData
                focusPolicy: Qt.NoFocus
                hoverEnabled: true
                Accessible.name: text
                Accessible.onPressAction: zone.clicked()
                onClicked: field.take(text)

                contentItem: Text {
                    leftPadding: 8
                    text: zone.text
                    font.pixelSize: Theme.bodyText
                    color: Theme.text
                    verticalAlignment: Text.AlignVCenter
                    elide: Text.ElideRight
                }
                background: Rectangle {
                    radius: Theme.smallCorner - 2
                    color: zone.hovered || zone.ListView.isCurrentItem ? Theme.hover : "transparent"
                }
            }
        }
        background: Rectangle {
            radius: Theme.corner
            color: Theme.surface
            border.width: 1
            border.color: Theme.line
        }
    }
}
