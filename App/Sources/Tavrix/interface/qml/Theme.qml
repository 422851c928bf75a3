pragma Singleton

import QtQuick
import Tavrix

// Colours, sizes and times of the whole window.
QtObject {
    readonly property bool dark: Appearance.isDark

    readonly property color ground: dark ? "#1A1B1D" : "#F5F5F3"
    readonly property color surface: dark ? "#26282B" : "#FFFFFF"
    readonly property color line: dark ? "#3A3D41" : "#DEDED9"
    readonly property color text: dark ? "#ECECEA" : "#1D1F21"
    readonly property color secondText: dark ? "#A9AEB4" : "#5B6167"
    readonly property color accent: dark ? "#86B4FF" : "#2563C9"
    readonly property color accentText: dark ? "#10131A" : "#FFFFFF"
    readonly property color good: dark ? "#6CCB96" : "#1B7A4B"
    readonly property color warn: dark ? "#F0B65A" : "#8A5200"
    readonly property color bad: dark ? "#FF8A80" : "#B3261E"
    readonly property color mark: dark ? "#84898F" : "#767B80"

    readonly property color hover: dark ? "#2E3134" : "#ECECE8"
    readonly property color pressed: dark ? "#373A3E" : "#E2E2DD"
    readonly property color selected: dark ? "#2D3644" : "#E3EBF8"
    readonly property color tile: dark ? "#323539" : "#E8E8E4"

    readonly property int smallText: 11
    readonly property int bodyText: 13
    readonly property int nameText: 15
    readonly property int titleText: 20

    readonly property int step: 4
    readonly property int corner: 8
    readonly property int smallCorner: 6
    readonly property int control: 32

    readonly property int motion: Appearance.hasMotion ? 120 : 0
}
