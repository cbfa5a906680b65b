// What every clickable thing has in common: pointer, keyboard and assistive technology press it alike.
import QtQuick

Item {
    id: pressable

    property string accessibleName
    readonly property bool pressed: enabled && (tap.pressed || keyDown)
    property bool keyDown: false

    signal activated

    function keyPressed(event) {
        event.accepted = isPressKey(event);
        if (event.accepted && !event.isAutoRepeat)
            keyDown = true;
    }

    // On release, so that the key's repeats never reach the window that gets the keyboard next.
    function keyReleased(event) {
        event.accepted = isPressKey(event);
        if (!event.accepted || event.isAutoRepeat || !keyDown)
            return;
        keyDown = false;
        activated();
    }

    function isPressKey(event) {
        return event.key === Qt.Key_Return || event.key === Qt.Key_Enter || event.key === Qt.Key_Space;
    }

    activeFocusOnTab: enabled
    onActiveFocusChanged: keyDown = false
    Keys.onPressed: event => keyPressed(event)
    Keys.onReleased: event => keyReleased(event)

    Accessible.role: Accessible.Button
    Accessible.name: accessibleName
    Accessible.focusable: true
    Accessible.onPressAction: activated()

    TapHandler {
        id: tap
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: pressable.activated()
    }
}
