// An action with its key combination, and the button that records another.
import QtQuick
import Tilora

Item {
    id: row

    required property string title
    required property string binding
    required property bool recording
    readonly property int spacing: 12

    signal toggled

    implicitHeight: button.implicitHeight

    Label {
        objectName: "shortcutTitle"
        anchors.left: parent.left
        anchors.right: combination.left
        anchors.rightMargin: row.spacing
        anchors.verticalCenter: parent.verticalCenter
        text: row.title
        size: 14
        weight: TextStyle.medium
        elide: Text.ElideRight
    }

    Item {
        id: combination
        objectName: "combination"
        readonly property int horizontalPadding: 10
        readonly property int verticalPadding: 6

        anchors.right: button.left
        anchors.rightMargin: row.spacing
        anchors.verticalCenter: parent.verticalCenter
        width: binding.implicitWidth + 2 * horizontalPadding
        height: binding.implicitHeight + 2 * verticalPadding

        Surface {
            objectName: "combinationBackground"
            anchors.fill: parent
            radius: 8
            color: Theme.faded(Theme.controlBackground, 0.7)
        }

        Label {
            id: binding
            objectName: "binding"
            anchors.centerIn: parent
            text: row.binding
            size: TextStyle.body
            monospaced: true
        }
    }

    PushButton {
        id: button
        objectName: "record"
        anchors.right: parent.right
        width: 124
        title: row.recording ? "Press Keys..." : "Change Keys"
        accessibleName: title + ", " + row.title
        style: PushButton.Prominent
        large: true
        tint: row.recording ? Theme.orange : Theme.accent
        onActivated: row.toggled()
    }
}
