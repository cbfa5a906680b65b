// Whether Tilora may control windows, and what the session lacks for it.
import QtQuick
import Tilora

FocusScope {
    id: view

    required property AccessViewModel access
    required property MenuViewModel menu
    readonly property int padding: 22

    signal dismissed

    width: 520
    height: content.implicitHeight + 2 * padding
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
        anchors.fill: parent
        color: Theme.windowBackground
    }

    Column {
        id: content
        x: view.padding
        y: view.padding
        width: view.width - 2 * view.padding
        spacing: 16

        SectionCard {
            width: parent.width
            title: "Permission"

            SettingRow {
                width: parent.width
                title: "Let Tilora arrange windows"
                description: "It shows one window or a pair on each screen and hides the rest"

                ToggleSwitch {
                    objectName: "allowed"
                    accessibleName: "Let Tilora arrange windows"
                    on: view.access.allowed
                    onActivated: view.access.toggleAllowed()
                }
            }
        }

        SectionCard {
            width: parent.width
            title: "This Session"

            Label {
                objectName: "complete"
                visible: view.access.missing.length === 0
                width: parent.width
                text: "It has everything that Tilora needs."
                secondary: true
                wrapMode: Text.Wrap
            }

            Repeater {
                model: view.access.missing

                SymbolLine {
                    required property int index
                    required property string modelData

                    objectName: "missing" + index
                    width: parent.width
                    symbol: "exclamationmark.triangle.fill"
                    text: modelData
                    color: Theme.orangeText
                }
            }
        }
    }
}
