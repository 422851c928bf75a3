import QtQuick
import Tavrix

// The window without a source: waiting for a phone, or reading one.
Item {
}
