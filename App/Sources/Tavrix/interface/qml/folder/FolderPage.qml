import QtQuick
import Tavrix

// The shots of one folder, day by day.
FocusScope {
    id: page

    readonly property bool isFast: Math.abs(flick.verticalVelocity) > 6000

    function close() {
        ShotListModel.close();
    }

    Accessible.role: Accessible.List
    Accessible.name: Words.shotsOfFolder

    Keys.onPressed: event => {
        const steps = new Map([[Qt.Key_Left, ShotListModel.Left], [Qt.Key_Right, ShotListModel.Right], [Qt.Key_Up, ShotListModel.Up], [Qt.Key_Down, ShotListModel.Down], [Qt.Key_Home, ShotListModel.First], [Qt.Key_End, ShotListModel.Last], [Qt.Key_PageUp, ShotListModel.PageUp], [Qt.Key_PageDown, ShotListModel.PageDown]]);
        event.accepted = true;
        if (steps.has(event.key))
            ShotListModel.move(steps.get(event.key));
        else if (event.key === Qt.Key_Space || event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
            ShotViewer.open();
        else if (event.key === Qt.Key_Escape || event.key === Qt.Key_Backspace)
            page.close();
        else
            event.accepted = false;
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.ground
    }
    Item {
        id: header
        width: parent.width
        height: 48

        QuietButton {
            id: back
            x: 8
            anchors.verticalCenter: parent.verticalCenter
            leftPadding: 24
            implicitWidth: contentItem.implicitWidth + 40
            text: Words.backToFolders
            onClicked: page.close()

            Symbol {
                x: 6
                anchors.verticalCenter: parent.verticalCenter
                name: "chevron-left"
                color: Theme.secondText
            }
        }
        Text {
            id: title
            objectName: "folderName"
            anchors.left: back.right
            anchors.leftMargin: 8
            width: Math.min(implicitWidth, (parent.width - x) * 0.6)
            height: parent.height
            text: ShotListModel.title
            font.pixelSize: Theme.nameText
            font.weight: Font.DemiBold
            color: Theme.text
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
        }
        Text {
            objectName: "folderName"
            anchors.left: title.right
            anchors.leftMargin: 12
            anchors.right: parent.right
            anchors.rightMargin: 16
            height: parent.height
            text: ShotListModel.details
            font.pixelSize: Theme.bodyText
            color: Theme.secondText
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
        }
    }
    Rectangle {
        id: line
        y: header.height
        width: parent.width
        height: 1
        color: Theme.line
    }
    Item {
        id: view
        anchors.top: line.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        clip: true

        Flickable {
            id: flick
            anchors.fill: parent
            contentWidth: width
            contentHeight: ShotListModel.contentHeight
            boundsBehavior: Flickable.StopAtBounds
            pixelAligned: true

            // The model must not change while the items of the list are being made.
            property bool isReady: false

            function showPart() {
                if (isReady)
                    ShotListModel.setViewport(contentY, width, height);
            }
            onContentYChanged: showPart()
            onWidthChanged: showPart()
            onHeightChanged: showPart()
            Component.onCompleted: Qt.callLater(() => {
                isReady = true;
                showPart();
            })

            Repeater {
                model: ShotListModel.headers

                SectionHeader {
                    required property string sectionTitle
                    required property real headerTop
                    required property bool isShown

                    y: headerTop
                    width: flick.width
                    title: sectionTitle
                    visible: isShown
                }
            }
            Repeater {
                model: ShotListModel

                ShotTile {
                    wantsPictures: !page.isFast
                    showsFocus: page.activeFocus
                    onClicked: {
                        page.forceActiveFocus();
                        ShotListModel.setCurrent(row);
                    }
                    onOpened: {
                        ShotListModel.setCurrent(row);
                        ShotViewer.open();
                    }
                }
            }
        }
        SectionHeader {
            y: ShotListModel.topShift
            width: flick.width
            title: ShotListModel.topTitle
            visible: title !== ""
            Accessible.ignored: true
        }
        ThinScrollBar {
            id: bar
            anchors.right: parent.right
            height: parent.height
            orientation: Qt.Vertical
            size: flick.height / Math.max(1, flick.contentHeight)
            position: flick.contentY / Math.max(1, flick.contentHeight)
            onPositionChanged: if (pressed)
                flick.contentY = position * flick.contentHeight
        }
    }
    Connections {
        target: ShotListModel
        function onPositioned(top) {
            flick.contentY = top;
        }
    }
}
