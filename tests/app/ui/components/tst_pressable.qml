// Pointer and keyboard press alike whatever can be pressed.
import QtQuick
import QtTest
import Tilora

Item {
    width: 200
    height: 100

    Pressable {
        id: pressable
        width: 100
        height: 40
        accessibleName: "Pressable"
    }

    SignalSpy {
        id: activations
        target: pressable
        signalName: "activated"
    }

    TestCase {
        name: "Pressable"
        when: windowShown

        function init() {
            pressable.enabled = true;
            pressable.focus = false;
            activations.clear();
        }

        function test_aClickActivatesItOnce() {
            mouseClick(pressable);
            compare(activations.count, 1);
        }

        function test_itIsPressedWhileTheButtonIsDown() {
            mousePress(pressable);
            verify(pressable.pressed);
            compare(activations.count, 0);
            mouseRelease(pressable);
            verify(!pressable.pressed);
            compare(activations.count, 1);
        }

        function test_aPressThatIsDraggedAwayDoesNothing() {
            mousePress(pressable);
            mouseMove(pressable, 150, 80);
            mouseRelease(pressable, 150, 80);
            verify(!pressable.pressed);
            compare(activations.count, 0);
        }

        function test_returnEnterAndSpaceActivateItOnRelease_data() {
            return [{ tag: "Return", key: Qt.Key_Return }, { tag: "Enter", key: Qt.Key_Enter }, { tag: "Space", key: Qt.Key_Space }];
        }
        function test_returnEnterAndSpaceActivateItOnRelease(data) {
            pressable.forceActiveFocus();
            keyPress(data.key);
            verify(pressable.pressed);
            compare(activations.count, 0);
            keyRelease(data.key);
            verify(!pressable.pressed);
            compare(activations.count, 1);
        }

        function test_otherKeysDoNothing() {
            pressable.forceActiveFocus();
            keyClick(Qt.Key_A);
            compare(activations.count, 0);
        }

        function test_aKeyThatWasPressedElsewhereDoesNothing() {
            pressable.forceActiveFocus();
            keyPress(Qt.Key_Space);
            pressable.focus = false;
            pressable.forceActiveFocus();
            keyRelease(Qt.Key_Space);
            compare(activations.count, 0);
        }

        function test_disabledItIsNeverPressed() {
            pressable.enabled = false;
            mouseClick(pressable);
            compare(activations.count, 0);
            verify(!pressable.activeFocusOnTab);
        }
    }
}
