import QtQuick
import Tavrix

// A transfer under way.
Item {
}
