// Translating the menu for QML.
#include "app/ui/menu_view_model.h"

#include <QCoreApplication>
#include <utility>

namespace tilora::app {
namespace {

enum Role : int { titleRole = Qt::UserRole, subtitleRole, symbolRole, shortcutRole };

bool differsInShortcut(const MenuRow& one, const MenuRow& other) { return one.shortcut != other.shortcut; }

}  // namespace

int MenuRows::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : static_cast<int>(rows_.size()); }

QVariant MenuRows::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const MenuRow& row = rows_.at(static_cast<std::size_t>(index.row()));
  switch (role) {
    case titleRole:
      return QString::fromStdString(row.title);
    case subtitleRole:
      return QString::fromStdString(row.subtitle);
    case symbolRole:
      return QString::fromStdString(row.symbol);
    case shortcutRole:
      return QString::fromStdString(row.shortcut);
    default:
      return {};
  }
}

QHash<int, QByteArray> MenuRows::roleNames() const {
  return {{titleRole, "title"}, {subtitleRole, "subtitle"}, {symbolRole, "symbol"}, {shortcutRole, "shortcut"}};
}

void MenuRows::refresh() {
  const auto before = std::exchange(rows_, menu_.rows());
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const QModelIndex changed = index(static_cast<int>(i));
    if (differsInShortcut(before.at(i), rows_.at(i))) Q_EMIT dataChanged(changed, changed, {shortcutRole});
  }
}

MenuViewModel::MenuViewModel(WindowManagerController& controller, MenuActions actions)
    : controller_(controller),
      actions_(std::move(actions)),
      menu_(controller, actions_.openSettings),
      rows_(menu_),
      changes_(controller, [this] {
        rows_.refresh();
        Q_EMIT changed();
      }) {}

QString MenuViewModel::header() const {
  const auto entry = [](const QString& text) { return text.isEmpty() ? std::nullopt : std::optional(text.toStdString()); };
  return QString::fromStdString(menuHeader(std::nullopt, std::nullopt, entry(QCoreApplication::applicationVersion()), std::nullopt));
}

void MenuViewModel::click(int index) {
  constexpr int firstPlacement = 2;
  Q_EMIT chosen();
  const auto act = [this, index] { menu_.click(index + 1); };
  if (index >= firstPlacement && actions_.inUsersWindow) {
    actions_.inUsersWindow(act);
  } else {
    act();
  }
}

void MenuViewModel::openAccessibilitySettings() {
  Q_EMIT chosen();
  controller_.openAccessibilitySettings();
}

void MenuViewModel::requestAgain() {
  Q_EMIT chosen();
  controller_.requestAccessibilityPermission(true);
}

void MenuViewModel::quit() {
  Q_EMIT chosen();
  actions_.quit();
}

}  // namespace tilora::app
