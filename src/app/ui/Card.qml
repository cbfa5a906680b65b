// A titled group on a rounded background.
import QtQuick
import Tilora

Item {
    id: card

    property string title
    property int titleSize: 13
    property bool titleSecondary: true
    property int padding: 12
    property int cornerRadius: 12
    property int titleSpacing: 10
    property int contentSpacing: 6
    default property alias content: body.data

    implicitHeight: stack.implicitHeight + 2 * padding
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Surface {
        objectName: "background"
        anchors.fill: parent
        radius: card.cornerRadius
        continuous: true
        color: Theme.faded(Theme.controlBackground, 0.45)
        outlineColor: Theme.faded(Theme.separator, 0.35)
        outlineWidth: 1
    }

    Column {
        id: stack
        objectName: "stack"
        x: card.padding
        y: card.padding
        width: card.width - 2 * card.padding
        spacing: card.titleSpacing

        Label {
            objectName: "title"
            text: card.title
            size: card.titleSize
            weight: TextStyle.semibold
            rounded: true
            secondary: card.titleSecondary
        }

        Column {
            id: body
            objectName: "content"
            width: parent.width
            spacing: card.contentSpacing
        }
    }
}
