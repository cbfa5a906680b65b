// Asks whether Tilora may arrange windows, or says what the session lacks for it.
import QtQuick
import Tilora

FocusScope {
    id: view

    // One sentence each; with any, there is nothing to agree to.
    required property list<string> missing
    readonly property bool asks: missing.length === 0
    readonly property int padding: 22
    readonly property int pictureWidth: 64

    signal answered(bool agreed)

    width: 480
    height: content.implicitHeight + 2 * padding
    focus: true
    Keys.onEscapePressed: answered(false)

    Rectangle {
        objectName: "background"
        anchors.fill: parent
        color: Theme.windowBackground
    }

    PairPicture {
        objectName: "picture"
        x: view.padding
        y: view.padding
        width: view.pictureWidth
    }

    Column {
        id: content
        objectName: "content"
        x: 2 * view.padding + view.pictureWidth
        y: view.padding
        width: view.width - x - view.padding
        spacing: 10

        Label {
            objectName: "title"
            width: parent.width
            text: view.asks ? "Let Tilora arrange your windows?" : "Tilora cannot arrange windows in this session."
            size: 17
            weight: TextStyle.semibold
            rounded: true
            wrapMode: Text.Wrap
        }

        Label {
            objectName: "explanation"
            visible: view.asks
            width: parent.width
            text: "Tilora shows one window or a pair on each screen and hides the rest. They return when you switch to them, or when you quit."
            secondary: true
            wrapMode: Text.Wrap
        }

        Repeater {
            model: view.missing

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

        Item {
            objectName: "buttons"
            width: parent.width
            implicitHeight: start.implicitHeight + topMargin

            readonly property int topMargin: 8

            Row {
                anchors.right: parent.right
                anchors.bottom: parent.bottom
                spacing: 10

                PushButton {
                    id: refuse
                    objectName: "refuse"
                    focus: !view.asks
                    title: view.asks ? "Not Now" : "Close"
                    large: true
                    onActivated: view.answered(false)
                }

                PushButton {
                    id: start
                    objectName: "start"
                    focus: view.asks
                    visible: view.asks
                    title: "Start"
                    style: PushButton.Prominent
                    large: true
                    onActivated: view.answered(true)
                }
            }
        }
    }
}
