// A text in one of the interface's sizes and weights.
import QtQuick
import Tilora

Text {
    property int size: TextStyle.body
    property int weight: Font.Normal
    property bool monospaced: false
    property bool rounded: false
    property bool secondary: false

    color: secondary ? Theme.secondaryText : Theme.text
    textFormat: Text.PlainText
    font.family: monospaced ? Theme.monospacedFamily : rounded ? Theme.roundedFamily : Application.font.family
    font.pixelSize: size
    font.weight: weight
}
