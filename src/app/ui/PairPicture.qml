// A screen with a pair of windows.
import QtQuick
import Tilora

Item {
    id: picture

    // One sixteenth of the width, on whole pixels.
    readonly property int unit: Math.round(width / 16)

    implicitHeight: 12 * unit
    Accessible.ignored: true

    Surface {
        width: 16 * picture.unit
        height: 12 * picture.unit
        radius: 2 * picture.unit
        continuous: true
        color: Theme.faded(Theme.text, 0.85)
    }

    Repeater {
        model: [Theme.accent, Theme.controlBackground]

        Surface {
            required property int index
            required property color modelData

            x: (1 + 7.25 * index) * picture.unit
            y: picture.unit
            width: 6.75 * picture.unit
            height: 10 * picture.unit
            radius: 1.25 * picture.unit
            continuous: true
            color: modelData
        }
    }
}
