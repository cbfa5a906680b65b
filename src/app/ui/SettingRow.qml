// A setting: its title and description on the left, its control on the right.
import QtQuick
import Tilora

Item {
    id: row

    property string title
    property string description
    default property alias control: place.data

    implicitHeight: Math.max(texts.implicitHeight, place.childrenRect.height)

    Column {
        id: texts
        objectName: "texts"
        anchors.left: parent.left
        anchors.right: place.left
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Label {
            objectName: "settingTitle"
            text: row.title
            size: 14
            weight: TextStyle.medium
        }

        Label {
            objectName: "settingDescription"
            text: row.description
            size: TextStyle.footnote
            secondary: true
        }
    }

    Item {
        id: place
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: childrenRect.width
        height: childrenRect.height
    }
}
