import QtQuick
import QtQuick.Controls.Basic as C
import Tavrix

// The settings, in four sections.
Rectangle {
    id: inspector

    implicitWidth: ViewChoices.inspectorWidth
    width: implicitWidth
    color: Theme.ground
    Accessible.role: Accessible.Grouping
    Accessible.name: Words.inspectorName

    // Shows a section from its top.
    function showSection(index) {
        const section = sections.children[index];
        flickable.contentY = Math.min(section.y, Math.max(0, flickable.contentHeight - flickable.height));
    }
    // Scrolls until the item that has the keyboard is in view.
    function showFocus(item) {
        for (let above = item; above; above = above.parent) {
            if (above !== sections)
                continue;
            const top = item.mapToItem(sections, 0, 0).y - 24;
            const bottom = top + item.height + 48;
            if (top < flickable.contentY)
                flickable.contentY = Math.max(0, top);
            else if (bottom > flickable.contentY + flickable.height)
                flickable.contentY = bottom - flickable.height;
            return;
        }
    }

    Connections {
        target: inspector.Window.window
        function onActiveFocusItemChanged() {
            inspector.showFocus(inspector.Window.window.activeFocusItem);
        }
    }
    Flickable {
        id: flickable
        anchors.fill: parent
        anchors.leftMargin: 1
        contentHeight: sections.height + 16
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        C.ScrollBar.vertical: ThinScrollBar {}

        Column {
            id: sections
            x: 16
            width: flickable.width - 32

            WhatSection {}
            HowSection {}
            NamesSection {}
            FormatSection {}
        }
    }
    Rectangle {
        width: 1
        height: parent.height
        color: edge.containsMouse || edge.pressed ? Theme.mark : Theme.line
    }
    MouseArea {
        id: edge

        property real grabbed: 0

        x: -3
        width: 7
        height: parent.height
        hoverEnabled: true
        cursorShape: Qt.SplitHCursor
        preventStealing: true
        onPressed: mouse => grabbed = mouse.x
        onPositionChanged: mouse => {
            if (pressed)
                ViewChoices.inspectorWidth = inspector.width - (mouse.x - grabbed);
        }
        onReleased: ViewChoices.keepInspectorWidth()
    }
}
