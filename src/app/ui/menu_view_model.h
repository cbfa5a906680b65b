// The menu as its view binds it.
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QAbstractListModel>
#include <QString>
#include <array>
#include <functional>

#include "app/ui/published_changes.h"
#include "controller/menu_model.h"

namespace tilora::app {

/// The rows of the menu: title, subtitle, symbol and shortcut each.
class MenuRows : public QAbstractListModel {
  Q_OBJECT

 public:
  explicit MenuRows(const MenuModel& menu) : menu_(menu), rows_(menu.rows()) {}

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  /// Takes over what the menu says now.
  void refresh();

 private:
  const MenuModel& menu_;
  std::array<MenuRow, 6> rows_;
};

/// What the menu's buttons do beyond the controller's operations.
struct MenuActions {
  std::function<void()> openSettings;
  std::function<void()> quit;
  /// Does something for the active window; empty where the menu leaves the user's window active: it is done at once there.
  std::function<void(std::function<void()>)> inUsersWindow;
};

class MenuViewModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the program")
  Q_PROPERTY(QString header READ header CONSTANT)
  Q_PROPERTY(QAbstractListModel* rows READ rows CONSTANT)
  Q_PROPERTY(bool showsPermissionCard READ showsPermissionCard NOTIFY changed)
  Q_PROPERTY(QString gap READ gap NOTIFY changed)

 public:
  /// The controller must outlive it.
  MenuViewModel(WindowManagerController& controller, MenuActions actions);

  QString header() const;
  QAbstractListModel* rows() { return &rows_; }
  bool showsPermissionCard() const { return menu_.showsPermissionCard(); }
  QString gap() const { return QString::fromStdString(menu_.gap()); }

  /// The user clicks the row at `index`, from 0 on.
  Q_INVOKABLE void click(int index);
  Q_INVOKABLE void openAccessibilitySettings();
  Q_INVOKABLE void requestAgain();
  Q_INVOKABLE void quit();

 Q_SIGNALS:
  void changed();
  /// The user chose something that ends a menu. Comes before what was chosen is done.
  void chosen();

 private:
  WindowManagerController& controller_;
  MenuActions actions_;
  MenuModel menu_;
  MenuRows rows_;
  PublishedChanges changes_;
};

}  // namespace tilora::app
