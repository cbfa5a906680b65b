// Translating the settings window for QML.
#include "app/ui/settings_view_model.h"

#include "shortcuts/binding_text.h"

namespace tilora::app {
namespace {

enum Role : int { titleRole = Qt::UserRole, bindingRole, recordingRole };

}  // namespace

int ShortcutRows::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : static_cast<int>(allShortcutActions.size()); }

QVariant ShortcutRows::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const ShortcutAction action = allShortcutActions.at(static_cast<std::size_t>(index.row()));
  switch (role) {
    case titleRole:
      return QString::fromUtf8(shortcutTitle(action).data(), static_cast<qsizetype>(shortcutTitle(action).size()));
    case bindingRole:
      return QString::fromStdString(bindingText(controller_.binding(action)));
    case recordingRole:
      return recorder_.recordingAction() == action;
    default:
      return {};
  }
}

QHash<int, QByteArray> ShortcutRows::roleNames() const {
  return {{titleRole, "title"}, {bindingRole, "binding"}, {recordingRole, "recording"}};
}

void ShortcutRows::refresh() { Q_EMIT dataChanged(index(0), index(rowCount() - 1)); }

SettingsViewModel::SettingsViewModel(WindowManagerController& controller, KeyMonitor& monitor)
    : controller_(controller), model_(controller, monitor), shortcuts_(controller, model_.recorder()), changes_(controller, [this] {
        shortcuts_.refresh();
        Q_EMIT changed();
      }) {
  model_.recorder().onChange([this] { changes_.expect(); });
}

QString SettingsViewModel::shortcutError() const { return QString::fromStdString(model_.recorder().shortcutError().value_or("")); }

void SettingsViewModel::toggleRecording(int index) {
  if (index < 0 || index >= shortcuts_.rowCount()) return;
  model_.recorder().toggle(allShortcutActions.at(static_cast<std::size_t>(index)));
}

}  // namespace tilora::app
