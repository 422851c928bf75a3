import QtQuick
import QtQuick.Templates as T
import Tavrix

// A choice of one among several, in a list that opens below. Its user gives it a name.
T.ComboBox {
    id: picker

    property ChoiceSetting setting: null
    readonly property var details: setting ? setting.details : []

    implicitWidth: 160
    implicitHeight: 28
    leftPadding: 10
    rightPadding: 28
    font.pixelSize: Theme.bodyText
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    model: setting ? setting.titles : []
    currentIndex: setting ? setting.current : -1
    displayText: setting ? setting.currentTitle : ""
    Accessible.role: Accessible.ComboBox
    Accessible.onPressAction: popup.open()
    onActivated: index => {
        setting.pick(index);
        currentIndex = Qt.binding(() => picker.setting ? picker.setting.current : -1);
    }

    contentItem: Text {
        text: picker.displayText
        font: picker.font
        color: Theme.text
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    indicator: Symbol {
        x: picker.width - width - 10
        y: (picker.height - height) / 2
        size: 12
        name: "chevron-down"
        color: Theme.secondText
    }
    background: Rectangle {
        radius: Theme.smallCorner
        color: picker.pressed ? Theme.pressed : Theme.surface
        border.width: 1
        border.color: picker.hovered ? Theme.mark : Theme.line

        FocusRing {
            visible: picker.visualFocus
        }
    }
    delegate: T.ItemDelegate {
        id: choice

        required property int index
        required property string modelData
        readonly property string detail: index < picker.details.length ? picker.details[index] : ""

        width: ListView.view.width
        height: detail === "" ? 28 : 44
        text: modelData
        highlighted: picker.highlightedIndex === index
        hoverEnabled: true
        Accessible.name: detail === "" ? text : text + " — " + detail
        Accessible.selected: picker.currentIndex === index
        Accessible.onPressAction: choice.clicked()

        contentItem: Item {
            Symbol {
                x: 8
                anchors.verticalCenter: parent.verticalCenter
                visible: picker.currentIndex === choice.index
                size: 12
                name: "check"
                color: Theme.text
            }
            Column {
                x: 28
                width: parent.width - 36
                anchors.verticalCenter: parent.verticalCenter
                spacing: 1

                Text {
                    width: parent.width
                    text: choice.text
                    font.pixelSize: Theme.bodyText
                    color: Theme.text
                    elide: Text.ElideRight
                }
                Text {
                    width: parent.width
                    visible: choice.detail !== ""
                    text: choice.detail
                    font.pixelSize: Theme.smallText
                    color: Theme.secondText
                    elide: Text.ElideRight
                }
            }
        }
        background: Rectangle {
            radius: Theme.smallCorner - 2
            color: choice.highlighted || choice.hovered ? Theme.hover : "transparent"
        }
    }
    popup: T.Popup {
        width: Math.max(picker.width, 200)
        implicitHeight: Math.min(contentItem.implicitHeight + 8, 340)
        padding: 4
        margins: 8
        onAboutToShow: y = PopupPlace.below(picker, height)

        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: picker.delegateModel
            currentIndex: picker.highlightedIndex
        }
        background: Rectangle {
            radius: Theme.corner
            color: Theme.surface
            border.width: 1
            border.color: Theme.line
        }
    }
}
