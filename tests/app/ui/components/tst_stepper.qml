// The stepper: buttons, keys, wheel, press and hold.
import QtQuick
import QtTest
import Tilora

Item {
    width: 300
    height: 100

    Stepper {
        id: stepper
        property int value: 40

        text: value + " px"
        accessibleName: "Gap"
        canIncrement: value < 80
        canDecrement: value > 0
        onIncrement: value = Math.min(value + 1, 80)
        onDecrement: value = Math.max(value - 1, 0)
    }

    TestCase {
        name: "Stepper"
        when: windowShown

        function init() {
            stepper.value = 40;
            stepper.forceActiveFocus();
        }

        function test_itsButtonsStepOnce() {
            mouseClick(findChild(stepper, "increment"));
            compare(stepper.value, 41);
            mouseClick(findChild(stepper, "decrement"));
            mouseClick(findChild(stepper, "decrement"));
            compare(stepper.value, 39);
        }

        function test_arrowsAndSignsStep_data() {
            return [
                { tag: "up", key: Qt.Key_Up, value: 41 }, { tag: "right", key: Qt.Key_Right, value: 41 }, { tag: "plus", key: Qt.Key_Plus, value: 41 },
                { tag: "down", key: Qt.Key_Down, value: 39 }, { tag: "left", key: Qt.Key_Left, value: 39 }, { tag: "minus", key: Qt.Key_Minus, value: 39 }
            ];
        }
        function test_arrowsAndSignsStep(data) {
            keyClick(data.key);
            compare(stepper.value, data.value);
        }

        function test_aNotchOfTheWheelIsAStepAndSmallTurnsAddUp() {
            mouseWheel(stepper, 10, 10, 0, 120);
            compare(stepper.value, 41);
            mouseWheel(stepper, 10, 10, 0, -240);
            compare(stepper.value, 39);
            mouseWheel(stepper, 10, 10, 0, 60);
            compare(stepper.value, 39);
            mouseWheel(stepper, 10, 10, 0, 60);
            compare(stepper.value, 40);
        }

        function test_heldAButtonStepsOnUntilTheEnd() {
            stepper.value = 75;
            mousePress(findChild(stepper, "increment"));
            compare(stepper.value, 75);
            tryCompare(stepper, "value", 80);
            verify(!findChild(stepper, "increment").enabled);
            mouseRelease(findChild(stepper, "increment"));
            compare(stepper.value, 80);
        }

        function test_theButtonAtTheEndOfTheRangeIsDisabled() {
            stepper.value = 0;
            verify(!findChild(stepper, "decrement").enabled);
            mouseClick(findChild(stepper, "decrement"));
            compare(stepper.value, 0);
            keyClick(Qt.Key_Down);
            compare(stepper.value, 0);
            verify(findChild(stepper, "increment").enabled);
        }

        function test_theTextStartsAtItsLeftAndTakesSixtyFourAtLeast() {
            const label = findChild(stepper, "stepperLabel");
            compare(label.width, 64);
            compare(label.horizontalAlignment, Text.AlignLeft);
            compare(stepper.width, 150);
        }
    }
}
