// A switch; its label is hidden and only told to assistive technology.
import QtQuick
import Tilora

Pressable {
    id: toggle

    property bool on
    readonly property int knobMargin: 3

    width: 46
    height: 26
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: on
    Accessible.onToggleAction: activated()

    SpringValue {
        id: slide
        objectName: "slide"
        target: toggle.on ? 1 : 0
        response: 0.2
        dampingFraction: 0.9
    }

    Surface {
        objectName: "track"
        anchors.fill: parent
        radius: height / 2
        color: toggle.on ? Theme.accent : Theme.faded(Theme.text, toggle.pressed ? 0.34 : 0.26)
        outlineColor: Theme.faded(Theme.separator, 0.5)
        outlineWidth: 1
    }

    FocusRing {
        radius: height / 2
    }

    Surface {
        objectName: "knob"
        x: toggle.knobMargin + slide.value * (toggle.width - width - 2 * toggle.knobMargin)
        y: toggle.knobMargin
        width: height
        height: toggle.height - 2 * toggle.knobMargin
        radius: height / 2
        color: "white"
        outlineColor: Theme.faded("black", 0.15)
        outlineWidth: 1
    }
}
