// One row of the menu.
import QtQuick
import Tilora

Pressable {
    id: row

    required property string title
    required property string subtitle
    required property string symbol
    required property string shortcut

    readonly property int horizontalPadding: 10
    readonly property int verticalPadding: 8
    readonly property int cornerRadius: 10
    readonly property int symbolSize: 13
    readonly property int spacing: 8
    // 0 is idle, 1 pressed.
    readonly property real press: spring.value

    function between(idle, whenPressed) {
        return idle + (whenPressed - idle) * press;
    }

    implicitHeight: content.implicitHeight + 2 * verticalPadding
    scale: between(1, 0.99)
    accessibleName: title
    Accessible.description: shortcut === "" ? subtitle : subtitle + ", " + shortcut

    SpringValue {
        id: spring
        objectName: "spring"
        target: row.pressed ? 1 : 0
        response: 0.16
        dampingFraction: 0.85
    }

    Surface {
        objectName: "background"
        anchors.fill: parent
        radius: row.cornerRadius
        continuous: true
        color: Theme.faded(Theme.controlBackground, row.between(0.6, 0.95))
        outlineColor: Theme.faded(Theme.separator, row.between(0.25, 0.45))
        outlineWidth: 1
    }

    FocusRing {
        radius: row.cornerRadius + reach
        continuous: true
    }

    Item {
        id: content
        objectName: "label"
        x: row.horizontalPadding
        y: row.verticalPadding
        width: row.width - 2 * row.horizontalPadding
        implicitHeight: Math.max(texts.implicitHeight, capsule.implicitHeight)

        Symbol {
            id: image
            objectName: "symbol"
            anchors.verticalCenter: parent.verticalCenter
            // A symbol stands as high as the capitals and a little more, as wide as its text size is high and a quarter more.
            width: Math.round(row.symbolSize * 1.25)
            height: width
            name: row.symbol
            color: Theme.text
        }

        Column {
            id: texts
            anchors.left: image.right
            anchors.leftMargin: row.spacing
            anchors.right: capsule.visible ? capsule.left : parent.right
            anchors.rightMargin: capsule.visible ? row.spacing : 0
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2

            Label {
                objectName: "rowTitle"
                width: parent.width
                text: row.title
                size: 13
                weight: TextStyle.medium
                wrapMode: Text.Wrap
            }

            Label {
                objectName: "rowSubtitle"
                width: parent.width
                text: row.subtitle
                size: 11
                secondary: true
                wrapMode: Text.Wrap
            }
        }

        ShortcutCapsule {
            id: capsule
            objectName: "shortcutCapsule"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            visible: row.shortcut !== ""
            text: row.shortcut
        }
    }
}
