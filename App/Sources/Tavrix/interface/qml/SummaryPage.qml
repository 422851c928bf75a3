import QtQuick
import QtQuick.Controls.Basic as C
import Tavrix

// The result of a transfer.
Item {
    id: page

    readonly property bool isGood: SummaryModel.tone === SummaryModel.Good
    readonly property color ink: isGood ? Theme.good : SummaryModel.tone === SummaryModel.Bad ? Theme.bad : Theme.warn

    Item {
        id: head
        anchors.horizontalCenter: parent.horizontalCenter
        y: 36
        width: Math.min(880, parent.width - 64)
        height: Math.max(56, words.implicitHeight)
        visible: SummaryModel.verdict !== ""

        Rectangle {
            width: 48
            height: 48
            radius: 24
            color: page.ink

            Symbol {
                anchors.centerIn: parent
                name: page.isGood ? "check" : "warning"
                size: 26
                color: Theme.ground
            }
        }
        Column {
            id: words
            x: 68
            width: parent.width - x
            spacing: 4

            Text {
                width: parent.width
                text: SummaryModel.verdict
                font.pixelSize: Theme.titleText
                font.weight: Font.DemiBold
                color: Theme.text
                wrapMode: Text.WordWrap
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Text {
                width: parent.width
                text: SummaryModel.advice === "" ? SummaryModel.written : SummaryModel.written + ". " + SummaryModel.advice
                font.pixelSize: Theme.bodyText
                color: Theme.secondText
                wrapMode: Text.WordWrap
            }
        }
    }
    Row {
        id: buttons
        anchors.left: head.left
        anchors.leftMargin: 68
        anchors.top: head.bottom
        anchors.topMargin: 16
        visible: head.visible
        spacing: 8

        PushButton {
            visible: SummaryModel.canRetry
            leading: true
            text: Words.again
            onClicked: SummaryModel.retry()
        }
        PushButton {
            leading: !SummaryModel.canRetry
            text: Words.done
            onClicked: SummaryModel.leave()
        }
        PushButton {
            text: Words.openFolderOfRun
            onClicked: SummaryModel.openFolder()
        }
    }
    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: buttons.bottom
        anchors.topMargin: 24
        width: head.width
        height: Math.min(list.contentHeight + 24, page.height - y - 24)
        visible: head.visible
        radius: Theme.corner
        color: Theme.surface
        border.width: 1
        border.color: Theme.line

        ListView {
            id: list
            anchors.fill: parent
            anchors.margins: 12
            anchors.leftMargin: 20
            anchors.rightMargin: 8
            clip: true
            model: SummaryModel
            boundsBehavior: Flickable.StopAtBounds
            C.ScrollBar.vertical: ThinScrollBar {}
            delegate: SummaryLine {
                width: ListView.view.width - 16
            }
        }
    }
}
