// The sizes of the system's named text styles, and its weights.
pragma Singleton
import QtQuick

QtObject {
    readonly property int body: 13
    readonly property int subheadline: 11
    readonly property int footnote: 10

    readonly property int medium: Font.Medium
    readonly property int semibold: Font.DemiBold
}
