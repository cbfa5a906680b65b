// The settings window.
#pragma once

#include <QKeyEvent>
#include <functional>

#include "app/ui/dismissible_view.h"
#include "app/ui/menu_view_model.h"
#include "app/ui/settings_view_model.h"

namespace tilora::app {

/// An ordinary window of one size. Closing it ends a recording.
class SettingsWindow : public DismissibleView {
  Q_OBJECT

 public:
  /// Shows a key press of the window to the recorder; true: it is swallowed.
  using KeyFilter = std::function<bool(const QKeyEvent&)>;

  /// The engine and the models must outlive it.
  SettingsWindow(QQmlEngine& engine, SettingsViewModel& settings, MenuViewModel& menu, KeyFilter filter);

  /// Whether it also offers what the menu does.
  void setOffersMenu(bool offersMenu);

 Q_SIGNALS:
  void closed();

 protected:
  bool event(QEvent* event) override;

 private:
  SettingsViewModel& settings_;
  KeyFilter filter_;
};

}  // namespace tilora::app
