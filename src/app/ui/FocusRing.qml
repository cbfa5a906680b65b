// Shows which control the keyboard is on.
import QtQuick
import Tilora

Surface {
    readonly property int thickness: 2
    readonly property int gap: 1
    readonly property int reach: thickness + gap

    objectName: "focusRing"
    anchors.fill: parent
    anchors.margins: -reach
    visible: parent.activeFocus
    outlineColor: Theme.accent
    outlineWidth: thickness
}
