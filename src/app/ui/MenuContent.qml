// What the menu consists of, from top to bottom.
import QtQuick
import Tilora

Column {
    id: menu

    required property MenuViewModel model

    spacing: 12

    Card {
        objectName: "actions"
        width: parent.width
        title: menu.model.header

        Repeater {
            model: menu.model.rows

            MenuRow {
                required property int index

                objectName: "row" + index
                width: parent.width
                onActivated: menu.model.click(index)
            }
        }
    }

    PermissionCard {
        objectName: "permissions"
        width: parent.width
        visible: menu.model.showsPermissionCard
        model: menu.model
    }

    Item {
        objectName: "footer"
        width: parent.width
        implicitHeight: quit.implicitHeight

        SymbolLine {
            objectName: "gap"
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - quit.width
            symbol: "square.grid.3x3"
            text: menu.model.gap
            size: 12
            weight: TextStyle.medium
            rounded: true
        }

        PushButton {
            id: quit
            objectName: "quit"
            anchors.right: parent.right
            title: "Quit Tilora"
            style: PushButton.AccessoryBar
            onActivated: menu.model.quit()
        }
    }
}
