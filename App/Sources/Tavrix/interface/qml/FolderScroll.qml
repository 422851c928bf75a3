import QtQuick
import Tavrix

// The scrolled list of folders. The model knows every place; a few items are shown again and again.
FocusScope {
    id: scroll

    // While the list is scrolled faster than this, nobody sees pictures.
    readonly property bool isFast: Math.abs(flick.verticalVelocity) > 6000
    property int renamedRow: -1
    readonly property bool renames: renamedRow >= 0

    signal opened(int row)

    function rename(row) {
        if (row < 0)
            return;
        renamedRow = row;
        editor.text = FolderListModel.nameOf(row);
        editor.selectAll();
        editor.forceActiveFocus();
    }
    function takeName() {
        FolderActions.rename(renamedRow, editor.text);
        endRename();
    }
    function endRename() {
        renamedRow = -1;
        // Otherwise the list would hand the focus back to it.
        editor.focus = false;
        scroll.forceActiveFocus();
    }
    function openMenu(row) {
        scroll.forceActiveFocus();
        FolderListModel.point(row);
        menu.popup();
    }
    function openMenuAtCurrent() {
        const box = FolderListModel.boxOf(FolderListModel.currentRow);
        if (FolderActions.hasFolders)
            menu.popup(flick.contentItem, box.x + 24, box.y + 24);
    }
    // Explains why the current folder begins and ends where it does.
    function explain() {
        const box = FolderListModel.boxOf(FolderListModel.currentRow);
        explanation.paragraphs = FolderActions.boundary();
        explanation.x = box.x + 24;
        explanation.top = box.y + 56;
        explanation.open();
    }
    function showTip(item, isWanted) {
        if (isWanted) {
            tip.parent = item;
            tip.text = item.name;
            tip.open();
        } else if (tip.parent === item) {
            tip.close();
        }
    }

    Accessible.role: Accessible.List
    Accessible.name: Words.folders

    Keys.onPressed: event => {
        const extends_ = (event.modifiers & Qt.ShiftModifier) !== 0;
        const steps = new Map([[Qt.Key_Left, FolderListModel.Left], [Qt.Key_Right, FolderListModel.Right], [Qt.Key_Up, FolderListModel.Up], [Qt.Key_Down, FolderListModel.Down], [Qt.Key_Home, FolderListModel.First], [Qt.Key_End, FolderListModel.Last], [Qt.Key_PageUp, FolderListModel.PageUp], [Qt.Key_PageDown, FolderListModel.PageDown]]);
        event.accepted = true;
        if (steps.has(event.key))
            FolderListModel.move(steps.get(event.key), extends_);
        else if (event.key === Qt.Key_Space)
            FolderActions.toggleChecks();
        else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
            scroll.opened(FolderListModel.currentRow);
        else if (event.key === Qt.Key_F2)
            scroll.rename(FolderListModel.currentRow);
        else if (event.key === Qt.Key_Menu)
            scroll.openMenuAtCurrent();
        else if (event.key === Qt.Key_Escape && FolderListModel.selectedCount > 0)
            FolderListModel.clearSelection();
        else
            event.accepted = false;
    }

    Flickable {
        id: flick
        anchors.fill: parent
        clip: true
        contentItem.objectName: "folderContent"
        contentWidth: width
        contentHeight: FolderListModel.contentHeight
        boundsBehavior: Flickable.StopAtBounds
        pixelAligned: true

        // The model must not change while the items of the list are being made.
        property bool isReady: false

        function showPart() {
            if (isReady)
                FolderListModel.setViewport(contentY, width, height);
        }
        onContentYChanged: showPart()
        onWidthChanged: showPart()
        onHeightChanged: showPart()
        Component.onCompleted: Qt.callLater(() => {
            isReady = true;
            showPart();
        })

        TapHandler {
            onTapped: {
                scroll.forceActiveFocus();
                FolderListModel.clearSelection();
            }
        }
        Repeater {
            model: FolderListModel.headers

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
            model: FolderListModel.isList ? null : FolderListModel

            FolderCard {
                id: card
                wantsPictures: !scroll.isFast
                showsFocus: scroll.activeFocus
                onClicked: modifiers => {
                    scroll.forceActiveFocus();
                    FolderListModel.click(row, modifiers);
                }
                onToggled: FolderListModel.toggle(row)
                onOpened: scroll.opened(row)
                onMenuRequested: scroll.openMenu(row)
                onWantsTipChanged: scroll.showTip(card, wantsTip)
            }
        }
        Repeater {
            model: FolderListModel.isList ? FolderListModel : null

            FolderLine {
                id: line
                showsFocus: scroll.activeFocus
                onClicked: modifiers => {
                    scroll.forceActiveFocus();
                    FolderListModel.click(row, modifiers);
                }
                onToggled: FolderListModel.toggle(row)
                onOpened: scroll.opened(row)
                onMenuRequested: scroll.openMenu(row)
                onWantsTipChanged: scroll.showTip(line, wantsTip)
            }
        }
        TextBox {
            id: editor
            readonly property rect box: FolderListModel.boxOf(scroll.renamedRow)

            x: FolderListModel.isList ? box.x + 36 : box.x + 6
            y: FolderListModel.isList ? box.y + 6 : box.y + box.height - 114
            height: 28
            width: FolderListModel.isList ? Math.min(420, box.width - 48) : box.width - 12
            visible: scroll.renamedRow >= 0
            font.weight: Font.DemiBold
            Accessible.name: Words.folderName
            // A field passes these keys on, and in the list they open a folder.
            Keys.onReturnPressed: scroll.takeName()
            Keys.onEnterPressed: scroll.takeName()
            onActiveFocusChanged: if (!activeFocus && scroll.renamedRow >= 0)
                scroll.renamedRow = -1
            Keys.onEscapePressed: scroll.endRename()
        }
    }
    // The title of the section that is being scrolled stays until the next one pushes it away.
    SectionHeader {
        y: FolderListModel.topShift
        width: flick.width
        title: FolderListModel.topTitle
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
    NameTip {
        id: tip
    }
    FolderMenu {
        id: menu
        onOpenRequested: scroll.opened(FolderListModel.currentRow)
        onRenameRequested: scroll.rename(FolderListModel.currentRow)
        onExplanationRequested: scroll.explain()
    }
    InfoPopup {
        id: explanation
        parent: flick.contentItem
        width: 380
    }
    Connections {
        target: FolderListModel
        function onPositioned(top) {
            flick.contentY = top;
        }
        function onRebuilt() {
            scroll.renamedRow = -1;
        }
    }
}
