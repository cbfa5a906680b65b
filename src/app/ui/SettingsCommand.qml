// The key of the settings command: Command and comma, Control and comma on keyboards without Command.
pragma Singleton
import QtQuick

QtObject {
    function matches(key, modifiers) {
        const held = modifiers & (Qt.ShiftModifier | Qt.AltModifier | Qt.ControlModifier | Qt.MetaModifier);
        return key === Qt.Key_Comma && (held === Qt.ControlModifier || held === Qt.MetaModifier);
    }
}
