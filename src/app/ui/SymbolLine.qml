// A symbol and a text on one line: the gap in the menu, the errors in the settings window.
import QtQuick
import Tilora

Row {
    property alias symbol: image.name
    property alias text: label.text
    property alias size: label.size
    property alias weight: label.weight
    property alias rounded: label.rounded
    property alias color: label.color

    spacing: 6

    Symbol {
        id: image
        objectName: "lineSymbol"
        anchors.verticalCenter: label.verticalCenter
        width: Math.round(label.size * 1.25)
        height: width
        color: label.color
    }

    Label {
        id: label
        objectName: "lineText"
        width: Math.min(implicitWidth, parent.width - image.width - parent.spacing)
        wrapMode: Text.Wrap
    }
}
