// Says that access is missing, and offers the two ways to it.
import QtQuick
import Tilora

Card {
    id: card

    required property MenuViewModel model

    title: "Fix Permissions"
    contentSpacing: 8

    Label {
        objectName: "warning"
        width: parent.width
        text: "Window control is disabled until Accessibility access is granted."
        size: 12
        secondary: true
        wrapMode: Text.Wrap
    }

    Row {
        spacing: 8

        PushButton {
            objectName: "openSettings"
            title: "Open Settings"
            style: PushButton.Prominent
            onActivated: card.model.openAccessibilitySettings()
        }

        PushButton {
            objectName: "requestAgain"
            title: "Request Again"
            onActivated: card.model.requestAgain()
        }
    }
}
