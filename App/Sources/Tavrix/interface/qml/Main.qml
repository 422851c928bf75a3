import QtQuick
import QtQuick.Controls.Basic
import QtQml
import Tavrix

ApplicationWindow {
    id: window

    // Narrow windows show fewer columns; what the user opens stays open.
    property bool showsSidebar: width >= 760
    property bool showsInspector: width >= 1180

    width: ViewChoices.windowSize.width
    height: ViewChoices.windowSize.height
    minimumWidth: 720
    minimumHeight: 480
    visible: true
    title: Words.programName
    color: Theme.ground
    palette {
        window: Theme.ground
        windowText: Theme.text
        base: Theme.surface
        text: Theme.text
        button: Theme.surface
        buttonText: Theme.text
        highlight: Theme.accent
        highlightedText: Theme.accentText
        toolTipBase: Theme.surface
        toolTipText: Theme.text
        placeholderText: Theme.secondText
        mid: Theme.line
        dark: Theme.secondText
        light: Theme.hover
    }

    onClosing: close => {
        if (ProgressModel.isRunning && !ProgressModel.isStopping) {
            close.accepted = false;
            questions.askToStop(true);
        } else if (visibility === Window.Windowed) {
            ViewChoices.keepWindowSize(width, height);
        }
    }

    function showKeys() {
        keys.active = true;
        keys.item.open();
    }
    function chooseSource() {
        sourceDialog.active = true;
        sourceDialog.item.open();
    }

    header: TopBar {
        id: topBar
        visible: WindowModel.page === WindowModel.BrowsePage || WindowModel.page === WindowModel.EmptyPage
        onSidebarToggled: window.showsSidebar = !window.showsSidebar
        onInspectorToggled: window.showsInspector = !window.showsInspector
        showsSidebar: window.showsSidebar
        showsInspector: window.showsInspector
    }

    FocusScope {
        id: browsePage
        focus: visible
        anchors.fill: parent
        visible: WindowModel.page === WindowModel.BrowsePage

        Sidebar {
            id: sidebar
            anchors.left: parent.left
            anchors.top: parent.top
            anchors.bottom: parent.bottom
            width: 216
            visible: window.showsSidebar
        }
        FolderPane {
            id: folderPane
            anchors.left: sidebar.visible ? sidebar.right : parent.left
            anchors.right: inspector.visible ? inspector.left : parent.right
            anchors.top: parent.top
            anchors.bottom: parent.bottom
            focus: true
            visible: !ShotListModel.isOpen
            onOpened: row => ShotListModel.open(row)
        }
        FolderPage {
            id: folderPage
            anchors.fill: folderPane
            visible: ShotListModel.isOpen
            onVisibleChanged: (visible ? folderPage : folderPane).forceActiveFocus()
        }
        Inspector {
            id: inspector
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.bottom: parent.bottom
            visible: window.showsInspector
        }
    }

    Loader {
        anchors.fill: parent
        active: WindowModel.page === WindowModel.EmptyPage
        sourceComponent: EmptyPage {
            onFolderWanted: window.chooseSource()
        }
    }
    Loader {
        anchors.fill: parent
        active: WindowModel.page === WindowModel.TransferPage
        sourceComponent: TransferPage {
            onStopWanted: questions.askToStop(false)
        }
    }
    Loader {
        anchors.fill: parent
        active: WindowModel.page === WindowModel.SummaryPage
        sourceComponent: SummaryPage {}
    }

    footer: DestinationBar {
        id: destinationBar
        visible: WindowModel.page === WindowModel.BrowsePage
        onChooseWanted: questions.chooseDestination()
    }
    ShotPage {}
    Loader {
        id: keys
        active: false
        sourceComponent: KeysBox {}
    }
    Questions {
        id: questions
        onCloseWanted: window.close()
        onSourceWanted: window.chooseSource()
    }
    Loader {
        id: sourceDialog
        active: false
        source: "SourceDialog.qml"
    }

    DropArea {
        anchors.fill: parent
        keys: ["text/uri-list"]
        onDropped: drop => {
            if (drop.hasUrls)
                SourceMenuModel.drop(drop.urls[0]);
        }
    }
    Shortcut {
        sequences: ["Ctrl+Return", "Ctrl+Enter"]
        enabled: WindowModel.page === WindowModel.BrowsePage
        onActivated: DestinationModel.transfer()
    }
    Shortcut {
        sequence: "Ctrl+D"
        enabled: WindowModel.page === WindowModel.BrowsePage
        onActivated: questions.chooseDestination()
    }
    Shortcut {
        sequence: "F1"
        onActivated: window.showKeys()
    }
    Shortcut {
        sequence: "F9"
        onActivated: window.showsSidebar = !window.showsSidebar
    }
    Shortcut {
        sequence: "Ctrl+I"
        onActivated: window.showsInspector = !window.showsInspector
    }
    Shortcut {
        sequence: "Ctrl+F"
        enabled: topBar.isBrowsing
        onActivated: topBar.search()
    }
    Shortcut {
        sequence: "Ctrl+O"
        onActivated: topBar.openFolder()
    }
    Instantiator {
        model: 5

        delegate: Shortcut {
            required property int index

            sequence: "Ctrl+" + (index + 1)
            enabled: topBar.isBrowsing
            onActivated: WindowModel.layout = index
        }
    }
}
