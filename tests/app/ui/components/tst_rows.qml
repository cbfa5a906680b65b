// The rows of the menu and of the settings by themselves.
import QtQuick
import QtTest
import Tilora

Item {
    width: 600
    height: 400

    Column {
        width: 366

        MenuRow {
            id: menuRow
            width: parent.width
            title: "Title"
            subtitle: "Subtitle"
            symbol: "square.lefthalf.filled"
            shortcut: "Option+A"
        }
        ShortcutRow {
            id: shortcutRow
            width: parent.width
            title: "Move"
            binding: "Option+A"
            recording: false
            onToggled: recording = !recording
        }
        SettingRow {
            id: settingRow
            width: parent.width
            title: "Setting"
            description: "What it is for"

            Rectangle {
                id: control
                width: 60
                height: 50
            }
        }
        SymbolLine {
            id: line
            width: 120
            symbol: "exclamationmark.circle.fill"
            text: "A text that is far too long for a line of this width"
        }
    }

    TestCase {
        name: "Rows"
        when: windowShown

        function test_aRowOfTheMenuIsAsHighAsItsLabelAndItsPadding() {
            compare(menuRow.height, findChild(menuRow, "label").height + 16);
        }

        function test_withoutAShortcutThereIsNoCapsule() {
            verify(findChild(menuRow, "shortcutCapsule").visible);
            menuRow.shortcut = "";
            verify(!findChild(menuRow, "shortcutCapsule").visible);
            menuRow.shortcut = "Option+A";
        }

        function test_pressedARowIsSmallerByAHundredthAndFullerInColour() {
            const background = findChild(menuRow, "background");
            compare(menuRow.scale, 1);
            fuzzyCompare(background.color.a, 0.6 * Theme.controlBackground.a, 0.01);
            mousePress(menuRow);
            tryCompare(menuRow, "scale", 0.99);
            fuzzyCompare(background.color.a, 0.95 * Theme.controlBackground.a, 0.01);
            mouseRelease(menuRow);
            tryCompare(menuRow, "scale", 1);
        }

        function test_aRowThatRecordsSaysSoInOrange() {
            const button = findChild(shortcutRow, "record");
            compare(button.title, "Change Keys");
            compare(button.tint, Theme.accent);
            mouseClick(button);
            compare(button.title, "Press Keys...");
            compare(button.tint, Theme.orange);
            mouseClick(button);
            compare(button.title, "Change Keys");
        }

        function test_aSettingHasItsControlAtTheRightAndIsAsHighAsTheHigherSide() {
            compare(settingRow.height, 50);
            compare(control.mapToItem(settingRow, control.width, 0).x, settingRow.width);
        }

        function test_aLongLineIsWrappedInsideItsWidth() {
            const label = findChild(line, "lineText");
            verify(label.lineCount > 1);
            verify(label.x + label.width <= line.width);
            verify(!label.truncated);
        }
    }
}
