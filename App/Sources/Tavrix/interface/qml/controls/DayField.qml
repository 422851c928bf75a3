import QtQuick
import QtQuick.Controls.Basic as C
import QtQuick.Templates as T
import Tavrix

// A field for a day, typed or chosen in a calendar.
TextBox {
    id: field

    property DaySetting setting: null
    property bool isRefused: false

    implicitHeight: 28
    rightPadding: 30
    text: setting ? setting.text : ""
    onTextEdited: isRefused = false
    onEditingFinished: take()
    Keys.onEscapePressed: event => {
        event.accepted = isRefused || text !== setting.text;
        isRefused = false;
        show();
    }

    function take() {
        isRefused = !setting.type(text);
        if (!isRefused)
            show();
    }
    function show() {
        text = Qt.binding(() => field.setting ? field.setting.text : "");
    }

    IconButton {
        anchors.right: parent.right
        anchors.rightMargin: 2
        anchors.verticalCenter: parent.verticalCenter
        width: 24
        height: 24
        symbol: field.setting && field.setting.isSet ? "close" : "calendar"
        text: field.setting && field.setting.isSet ? Words.dayClear : Words.dayChoose
        Accessible.description: field.Accessible.name
        onClicked: {
            if (field.setting.isSet)
                field.setting.clear();
            else
                calendar.open();
            field.isRefused = false;
        }
    }
    T.Popup {
        id: calendar

        property int year
        property int month

        width: 248
        height: contentItem.implicitHeight + 24
        padding: 12
        margins: 8
        focus: true
        onAboutToShow: {
            y = PopupPlace.below(field, height);
            year = field.setting.year;
            month = field.setting.month - 1;
        }

        function move(months) {
            const first = new Date(year, month + months, 1);
            year = first.getFullYear();
            month = first.getMonth();
        }

        contentItem: Column {
            spacing: 4

            Item {
                width: parent.width
                height: 28

                IconButton {
                    width: 28
                    height: 28
                    symbol: "chevron-left"
                    text: Words.earlierMonth
                    onClicked: calendar.move(-1)
                }
                Text {
                    anchors.centerIn: parent
                    text: grid.locale.standaloneMonthName(calendar.month) + " " + calendar.year
                    font.pixelSize: Theme.bodyText
                    font.weight: Font.DemiBold
                    font.capitalization: Font.Capitalize
                    color: Theme.text
                }
                IconButton {
                    anchors.right: parent.right
                    width: 28
                    height: 28
                    symbol: "chevron-right"
                    text: Words.laterMonth
                    onClicked: calendar.move(1)
                }
            }
            C.DayOfWeekRow {
                width: parent.width
                padding: 0
                spacing: 0
                locale: grid.locale
                delegate: Text {
                    required property string shortName

                    text: shortName
                    font.pixelSize: Theme.smallText
                    color: Theme.secondText
                    horizontalAlignment: Text.AlignHCenter
                }
            }
            C.MonthGrid {
                id: grid
                width: parent.width
                height: 6 * 30
                padding: 0
                spacing: 0
                year: calendar.year
                month: calendar.month
                locale: Qt.locale(Words.calendarLocale)
                onClicked: date => {
                    field.setting.pick(date.getUTCFullYear(), date.getUTCMonth() + 1, date.getUTCDate());
                    calendar.close();
                }
                delegate: Item {
                    id: cell
                    required property var model

                    opacity: model.month === grid.month ? 1 : 0.35

                    Rectangle {
                        anchors.centerIn: parent
                        width: 28
                        height: 28
                        radius: 14
                        color: "transparent"
                        border.width: cell.model.today ? 1 : 0
                        border.color: Theme.mark
                    }
                    Text {
                        anchors.centerIn: parent
                        text: cell.model.day
                        font.pixelSize: 12
                        color: Theme.text
                    }
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
