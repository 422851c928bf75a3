import QtQuick
import Tavrix

// The search with its suggestions.
TextBox {
    id: field

    property bool isDismissed: false

    symbol: "search"
    placeholderText: Words.searchHint
    rightPadding: text === "" ? 10 : 34
    onTextEdited: {
        isDismissed = false;
        WindowModel.searchText = text;
    }
    onActiveFocusChanged: if (!activeFocus)
        isDismissed = true
    Keys.onDownPressed: if (popup.isWanted)
        popup.item.list.incrementCurrentIndex()
    Keys.onUpPressed: if (popup.isWanted)
        popup.item.list.decrementCurrentIndex()
    Keys.onEscapePressed: event => {
        if (popup.isWanted)
            isDismissed = true;
        else if (text !== "")
            WindowModel.searchText = "";
        else
            event.accepted = false;
    }
    onAccepted: {
        if (popup.isWanted && popup.item.list.currentIndex >= 0)
            field.choose(popup.item.list.currentIndex);
        isDismissed = true;
    }

    function choose(row) {
        SearchSuggestions.choose(row);
        isDismissed = true;
    }

    Binding {
        target: field
        property: "text"
        value: WindowModel.searchText
    }
    IconButton {
        anchors.right: parent.right
        anchors.rightMargin: 2
        anchors.verticalCenter: parent.verticalCenter
        width: 28
        height: 28
        visible: field.text !== ""
        focusPolicy: Qt.NoFocus
        symbol: "close"
        text: Words.clearSearch
        onClicked: WindowModel.searchText = ""
    }
    // Made when the first suggestions come.
    Loader {
        id: popup
        property bool isWanted: field.activeFocus && !field.isDismissed && SearchSuggestions.count > 0
        active: false
        sourceComponent: SuggestionPopup {
            y: field.height + 4
            x: field.width - width
            width: Math.max(field.width, 264)
            visible: popup.isWanted
            onChosen: row => field.choose(row)
        }
        onIsWantedChanged: if (isWanted)
            active = true
    }
}
