// The shortcut at the end of a menu row.
import QtQuick
import Tilora

Item {
    property alias text: label.text
    readonly property int horizontalPadding: 7
    readonly property int verticalPadding: 4

    implicitWidth: label.implicitWidth + 2 * horizontalPadding
    implicitHeight: label.implicitHeight + 2 * verticalPadding

    Surface {
        objectName: "capsule"
        anchors.fill: parent
        radius: height / 2
        color: Theme.faded(Theme.controlBackground, 0.8)
        outlineColor: Theme.faded(Theme.separator, 0.45)
        outlineWidth: 1
    }

    Label {
        id: label
        objectName: "shortcut"
        anchors.centerIn: parent
        size: 11
        weight: TextStyle.medium
        monospaced: true
        secondary: true
    }
}
