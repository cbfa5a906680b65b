// Shows which control the keyboard is on.
import QtQuick
import Tilora

Surface {
    readonly property int reach: 2

    anchors.fill: parent
    anchors.margins: -reach
    visible: parent.activeFocus
    outlineColor: Theme.accent
    outlineWidth: reach
}
