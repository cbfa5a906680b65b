// The panel under the icon.
import QtQuick
import Tilora

FocusScope {
    id: view

    required property MenuViewModel menu
    readonly property int horizontalPadding: 15
    readonly property int verticalPadding: 7

    signal dismissed

    width: 420
    implicitHeight: content.implicitHeight + 2 * verticalPadding
    focus: true
    Accessible.role: Accessible.PopupMenu
    Accessible.name: menu.header

    function step(forward) {
        const from = Window.activeFocusItem ?? view;
        const next = from.nextItemInFocusChain(forward);
        if (next)
            next.forceActiveFocus(forward ? Qt.TabFocusReason : Qt.BacktabFocusReason);
    }

    Keys.onEscapePressed: dismissed()
    Keys.onDownPressed: step(true)
    Keys.onUpPressed: step(false)
    Keys.onTabPressed: step(true)
    Keys.onBacktabPressed: step(false)
    Keys.onPressed: event => {
        if (SettingsCommand.matches(event.key, event.modifiers)) {
            event.accepted = true;
            menu.click(0);
        }
    }

    // The gradient lets it through.
    Rectangle {
        objectName: "backing"
        anchors.fill: parent
        color: Theme.windowBackground
    }

    Rectangle {
        objectName: "gradient"
        anchors.fill: parent
        gradient: Gradient {
            GradientStop {
                position: 0
                color: Theme.windowBackground
            }
            GradientStop {
                position: 1
                color: Theme.faded(Theme.controlBackground, 0.5)
            }
        }
    }

    ScrollArea {
        anchors.fill: parent
        margin: view.verticalPadding
        contentHeight: view.implicitHeight

        MenuContent {
            id: content
            objectName: "content"
            x: view.horizontalPadding
            y: view.verticalPadding
            width: view.width - 2 * view.horizontalPadding
            model: view.menu
        }
    }

    // The edge that a window manager would draw.
    Rectangle {
        anchors.fill: parent
        color: "transparent"
        border.width: 1
        border.color: Theme.faded(Theme.separator, 0.6)
    }
}
