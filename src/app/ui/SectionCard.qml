// A section of the settings window.
import QtQuick
import Tilora

Card {
    titleSize: 17
    titleSecondary: false
    padding: 18
    cornerRadius: 14
    titleSpacing: 14
    contentSpacing: 12
}
