pragma Singleton

import QtQuick

// Where a list opens beside its control.
QtObject {
    // The y of a list in its control: below it, or above it where the window ends.
    function below(control, listHeight) {
        const end = control.mapToItem(null, 0, control.height + 4 + listHeight).y;
        return end > control.Window.height ? -listHeight - 4 : control.height + 4;
    }
}
