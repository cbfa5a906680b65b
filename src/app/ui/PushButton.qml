// A button with a text, in the styles and control sizes of the interface.
import QtQuick
import Tilora

Pressable {
    id: button

    enum Style {
        Prominent,
        Bordered,
        Link,
        AccessoryBar
    }

    property string title
    property int style: PushButton.Bordered
    property bool large: false
    property color tint: Theme.accent

    readonly property bool plain: style === PushButton.Link
    readonly property bool filled: style === PushButton.Prominent
    readonly property int textSize: large ? TextStyle.body : TextStyle.subheadline
    readonly property int sidePadding: plain ? 0 : large ? 14 : 10
    readonly property int cornerRadius: large ? 7 : 5

    function face() {
        if (filled)
            return pressed ? Qt.darker(tint, 1.15) : tint;
        if (style === PushButton.Bordered)
            return pressed ? Qt.darker(Theme.control, 1.15) : Theme.control;
        return Theme.faded(Theme.text, pressed ? 0.16 : hover.hovered ? 0.08 : 0);
    }

    function textColor() {
        if (plain)
            return Theme.faded(Theme.link, pressed ? 0.6 : 1);
        return filled ? Theme.textOn(tint) : Theme.text;
    }

    implicitWidth: label.implicitWidth + 2 * sidePadding
    implicitHeight: plain ? label.implicitHeight : large ? 30 : 22
    accessibleName: title
    Accessible.role: plain ? Accessible.Link : Accessible.Button

    HoverHandler {
        id: hover
        cursorShape: button.plain ? Qt.PointingHandCursor : Qt.ArrowCursor
    }

    Surface {
        objectName: "face"
        anchors.fill: parent
        visible: !button.plain
        radius: button.cornerRadius
        continuous: true
        color: button.face()
        outlineColor: button.style === PushButton.Bordered ? Theme.faded(Theme.separator, 0.6) : "transparent"
        outlineWidth: 1
    }

    FocusRing {
        radius: button.cornerRadius + reach
        continuous: true
    }

    Label {
        id: label
        objectName: "buttonTitle"
        anchors.centerIn: parent
        text: button.title
        size: button.textSize
        weight: button.filled ? TextStyle.medium : Font.Normal
        color: button.textColor()
    }
}
