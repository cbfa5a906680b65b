// Scrolls what is higher than its place, also to where the keyboard goes, and shows where it is scrolled to; from the top in a window that
// opens.
import QtQuick
import Tilora

Item {
    id: area

    // Stays free around what the keyboard goes to.
    property int margin
    property alias contentHeight: scroller.contentHeight
    default property alias content: scroller.flickableData

    function reveal(item) {
        if (!item || !isInside(item))
            return;
        const top = item.mapToItem(scroller.contentItem, 0, 0).y - margin;
        const bottom = top + item.height + 2 * margin;
        if (top < scroller.contentY)
            scroller.contentY = Math.max(top, 0);
        else if (bottom > scroller.contentY + scroller.height)
            scroller.contentY = Math.min(bottom, scroller.contentHeight) - scroller.height;
    }

    function isInside(item) {
        for (let around = item.parent; around; around = around.parent) {
            if (around === scroller.contentItem)
                return true;
        }
        return false;
    }

    Connections {
        target: area.Window.window
        function onActiveFocusItemChanged() {
            area.reveal(area.Window.activeFocusItem);
        }
        function onVisibleChanged() {
            if (!area.Window.window.visible)
                scroller.contentY = 0;
        }
    }

    Flickable {
        id: scroller
        objectName: "scroller"
        anchors.fill: parent
        boundsBehavior: Flickable.StopAtBounds
        flickableDirection: Flickable.AutoFlickIfNeeded
    }

    Rectangle {
        objectName: "scrollIndicator"
        readonly property int margin: 3

        anchors.right: parent.right
        anchors.rightMargin: margin
        y: margin + scroller.visibleArea.yPosition * (area.height - 2 * margin)
        width: 6
        height: scroller.visibleArea.heightRatio * (area.height - 2 * margin)
        visible: scroller.visibleArea.heightRatio < 1
        radius: width / 2
        color: Theme.faded(Theme.text, 0.35)
    }
}
