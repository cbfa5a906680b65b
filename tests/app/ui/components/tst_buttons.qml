// The buttons and the switch in their states.
import QtQuick
import QtTest
import Tilora

Item {
    width: 400
    height: 300

    Column {
        PushButton {
            id: prominent
            title: "Prominent"
            style: PushButton.Prominent
            tint: "#2474d4"
        }
        PushButton {
            id: bordered
            title: "Bordered"
            large: true
        }
        PushButton {
            id: link
            title: "Link"
            style: PushButton.Link
        }
        PushButton {
            id: bar
            title: "Bar"
            style: PushButton.AccessoryBar
        }
        ToggleSwitch {
            id: toggle
            accessibleName: "Switch"
            onActivated: on = !on
        }
    }

    TestCase {
        name: "Buttons"
        when: windowShown

        function faceOf(button) {
            return findChild(button, "face");
        }

        function test_aProminentOneIsFilledWithItsTintAndDarkerWhilePressed() {
            compare(faceOf(prominent).color, prominent.tint);
            mousePress(prominent);
            verify(faceOf(prominent).color.hslLightness < prominent.tint.hslLightness);
            mouseRelease(prominent);
            compare(faceOf(prominent).color, prominent.tint);
        }

        function test_itsTextIsReadableOnItsTint() {
            prominent.tint = "#2474d4";
            compare(findChild(prominent, "buttonTitle").color, Qt.color("white"));
            prominent.tint = "#ffd000";
            compare(findChild(prominent, "buttonTitle").color, Qt.color("black"));
            prominent.tint = "#2474d4";
        }

        function test_aBorderedOneHasAnOutlineAndItsControlSize() {
            verify(faceOf(bordered).outlineColor.a > 0);
            verify(bordered.height > prominent.height);
        }

        function test_aLinkIsItsTextAlone() {
            verify(!faceOf(link).visible);
            compare(link.implicitWidth, findChild(link, "buttonTitle").implicitWidth);
            compare(findChild(link, "buttonTitle").color.toString(), Theme.link.toString());
        }

        function test_aBarButtonHasAFaceOnlyUnderThePointer() {
            mouseMove(bar.parent, 390, 290);
            compare(faceOf(bar).color.a, 0);
            mouseMove(bar, 5, 5);
            tryVerify(() => faceOf(bar).color.a > 0);
        }

        function test_theSwitchSlidesItsKnobToTheOtherSide() {
            const knob = findChild(toggle, "knob");
            compare(knob.x, 3);
            mouseClick(toggle);
            verify(toggle.on);
            tryCompare(knob, "x", toggle.width - knob.width - 3);
            compare(findChild(toggle, "track").color, Theme.accent);
            toggle.forceActiveFocus();
            keyClick(Qt.Key_Space);
            verify(!toggle.on);
            tryCompare(knob, "x", 3);
        }

        function test_theRingShowsWhereTheKeyboardIs() {
            bordered.forceActiveFocus();
            verify(findChild(bordered, "focusRing").visible);
            verify(!findChild(toggle, "focusRing").visible);
            toggle.forceActiveFocus();
            verify(!findChild(bordered, "focusRing").visible);
            verify(findChild(toggle, "focusRing").visible);
        }
    }
}
