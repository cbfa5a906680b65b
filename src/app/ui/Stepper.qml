// A value with a button on either side of its range.
import QtQuick
import Tilora

Item {
    id: stepper

    property alias text: label.text
    property bool canIncrement
    property bool canDecrement
    property string accessibleName

    signal increment
    signal decrement

    implicitWidth: 150
    implicitHeight: sides.implicitHeight
    activeFocusOnTab: true
    Accessible.role: Accessible.SpinBox
    Accessible.name: accessibleName + ", " + text
    Accessible.focusable: true
    Accessible.onIncreaseAction: increment()
    Accessible.onDecreaseAction: decrement()
    Keys.onUpPressed: increment()
    Keys.onRightPressed: increment()
    Keys.onDownPressed: decrement()
    Keys.onLeftPressed: decrement()
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_Plus || event.key === Qt.Key_Minus;
        if (event.key === Qt.Key_Plus)
            increment();
        if (event.key === Qt.Key_Minus)
            decrement();
    }

    WheelHandler {
        // One notch of a wheel is 120.
        property int turned: 0

        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => {
            turned += event.angleDelta.y;
            for (; turned >= 120; turned -= 120)
                stepper.increment();
            for (; turned <= -120; turned += 120)
                stepper.decrement();
        }
    }

    FocusRing {
        radius: 8
        continuous: true
    }

    Row {
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        Label {
            id: label
            objectName: "stepperLabel"
            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(64, implicitWidth)
            horizontalAlignment: Text.AlignLeft
        }

        Row {
            id: sides

            StepperSide {
                objectName: "decrement"
                activeFocusOnTab: false
                accessibleName: "Decrease " + stepper.accessibleName
                enabled: stepper.canDecrement
                onStepped: stepper.decrement()
            }

            StepperSide {
                objectName: "increment"
                activeFocusOnTab: false
                accessibleName: "Increase " + stepper.accessibleName
                increments: true
                enabled: stepper.canIncrement
                onStepped: stepper.increment()
            }
        }
    }
}
