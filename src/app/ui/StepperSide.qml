// One half of a stepper: steps once when pressed, and on and on while it is held.
import QtQuick
import Tilora

Pressable {
    id: side

    property bool increments
    readonly property int untilRepeat: 400
    readonly property int repeatInterval: 50
    readonly property int lineWidth: 2
    readonly property int armLength: 10
    property bool repeated: false

    signal stepped

    width: 32
    height: 28
    opacity: enabled ? 1 : 0.35
    onPressedChanged: {
        if (pressed)
            repeated = false;
    }
    onActivated: {
        if (!repeated)
            stepped();
    }

    Timer {
        running: side.pressed
        interval: side.untilRepeat
        onTriggered: side.repeated = true
    }

    Timer {
        running: side.pressed && side.repeated
        repeat: true
        triggeredOnStart: true
        interval: side.repeatInterval
        onTriggered: side.stepped()
    }

    Surface {
        objectName: "face"
        anchors.fill: parent
        anchors.margins: 1
        radius: 6
        continuous: true
        color: side.pressed ? Qt.darker(Theme.control, 1.15) : Theme.control
        outlineColor: Theme.faded(Theme.separator, 0.6)
        outlineWidth: 1
    }

    FocusRing {
        radius: 6 + reach
        continuous: true
    }

    Rectangle {
        anchors.centerIn: parent
        width: side.armLength
        height: side.lineWidth
        color: Theme.text
    }

    Rectangle {
        anchors.centerIn: parent
        visible: side.increments
        width: side.lineWidth
        height: side.armLength
        color: Theme.text
    }
}
