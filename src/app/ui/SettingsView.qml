// The content of the settings window.
import QtQuick
import Tilora

FocusScope {
    id: view

    required property SettingsViewModel settings
    required property MenuViewModel menu
    // Where there is no place for the icon, this window offers what the menu does.
    required property bool offersMenu
    readonly property int padding: 22

    signal dismissed

    width: 640
    height: 633
    focus: true

    Keys.onPressed: event => {
        if (SettingsCommand.matches(event.key, event.modifiers)) {
            event.accepted = true;
            menu.click(0);
        } else if (event.key === Qt.Key_W && event.modifiers === Qt.ControlModifier) {
            event.accepted = true;
            dismissed();
        }
    }

    Rectangle {
        objectName: "background"
        anchors.fill: parent
        color: Theme.windowBackground
    }

    ScrollArea {
        anchors.fill: parent
        margin: view.padding
        contentHeight: content.implicitHeight + 2 * view.padding

        Column {
            id: content
            objectName: "content"
            x: view.padding
            y: view.padding
            width: view.width - 2 * view.padding
            spacing: 16

            Column {
                spacing: 2

                Label {
                    objectName: "title"
                    text: "Tilora Settings"
                    size: 26
                    weight: TextStyle.semibold
                    rounded: true
                }

                Label {
                    objectName: "subtitle"
                    text: "Configure layout behavior and global shortcuts"
                    size: TextStyle.subheadline
                    secondary: true
                }
            }

            SectionCard {
                objectName: "general"
                width: parent.width
                title: "General"

                SettingRow {
                    objectName: "paddingRow"
                    width: parent.width
                    title: "Window Padding"
                    description: "Gap around tiled windows"

                    Stepper {
                        objectName: "stepper"
                        accessibleName: "Window Padding"
                        text: view.settings.padding
                        canIncrement: view.settings.canIncrementPadding
                        canDecrement: view.settings.canDecrementPadding
                        onIncrement: view.settings.incrementPadding()
                        onDecrement: view.settings.decrementPadding()
                    }
                }

                SettingRow {
                    objectName: "loginRow"
                    width: parent.width
                    title: "Start on Login"
                    description: "Launch Tilora when you sign in"

                    ToggleSwitch {
                        objectName: "loginSwitch"
                        accessibleName: "Start on Login"
                        on: view.settings.startOnLogin
                        onActivated: view.settings.toggleStartOnLogin()
                    }
                }

                PushButton {
                    objectName: "loginItems"
                    title: "Open Login Items Settings"
                    style: PushButton.Link
                    large: true
                    onActivated: view.settings.openLoginItemsSettings()
                }

                SymbolLine {
                    objectName: "loginError"
                    width: parent.width
                    visible: text !== ""
                    symbol: "exclamationmark.triangle.fill"
                    text: view.settings.startOnLoginError
                    size: TextStyle.footnote
                    color: Theme.orangeText
                }
            }

            SectionCard {
                objectName: "shortcuts"
                width: parent.width
                title: "Shortcuts"

                Repeater {
                    model: view.settings.shortcuts

                    ShortcutRow {
                        required property int index

                        objectName: "shortcut" + index
                        width: parent.width
                        onToggled: view.settings.toggleRecording(index)
                    }
                }

                Label {
                    objectName: "hint"
                    text: "Press Esc while recording to cancel."
                    size: TextStyle.footnote
                    secondary: true
                }

                SymbolLine {
                    objectName: "shortcutError"
                    width: parent.width
                    visible: text !== ""
                    symbol: "exclamationmark.circle.fill"
                    text: view.settings.shortcutError
                    size: TextStyle.footnote
                    color: Theme.redText
                }

                PushButton {
                    objectName: "reset"
                    title: "Reset Shortcuts to Default"
                    large: true
                    onActivated: view.settings.resetShortcuts()
                }
            }

            Loader {
                objectName: "menu"
                width: parent.width
                active: view.offersMenu
                visible: active
                sourceComponent: MenuContent {
                    model: view.menu
                }
            }
        }
    }
}
