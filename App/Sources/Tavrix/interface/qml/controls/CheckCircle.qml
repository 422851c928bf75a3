import QtQuick

// The round check mark: full, empty, or full for a part.
Symbol {
    property bool checked
    property bool partly: false

    size: 20
    name: partly ? "partly" : checked ? "checked" : "unchecked"
    color: checked || partly ? Theme.text : Theme.mark
    second: Theme.surface
}
