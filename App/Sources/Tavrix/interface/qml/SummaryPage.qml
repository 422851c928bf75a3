import QtQuick
import Tavrix

// The result of a transfer.
Item {
}
