// The settings window as its view binds it.
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QAbstractListModel>
#include <QString>

#include "app/ui/published_changes.h"
#include "controller/settings_window_model.h"

namespace tilora::app {

/// The rows of the shortcuts: title, binding, and whether it is being recorded.
class ShortcutRows : public QAbstractListModel {
  Q_OBJECT

 public:
  ShortcutRows(const WindowManagerController& controller, const ShortcutRecorder& recorder)
      : controller_(controller), recorder_(recorder) {}

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  /// Says that every row may have changed.
  void refresh();

 private:
  const WindowManagerController& controller_;
  const ShortcutRecorder& recorder_;
};

class SettingsViewModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the program")
  Q_PROPERTY(QString padding READ padding NOTIFY changed)
  Q_PROPERTY(bool canIncrementPadding READ canIncrementPadding NOTIFY changed)
  Q_PROPERTY(bool canDecrementPadding READ canDecrementPadding NOTIFY changed)
  Q_PROPERTY(bool startOnLogin READ startOnLogin NOTIFY changed)
  Q_PROPERTY(QString startOnLoginError READ startOnLoginError NOTIFY changed)
  Q_PROPERTY(QAbstractListModel* shortcuts READ shortcuts CONSTANT)
  Q_PROPERTY(QString shortcutError READ shortcutError NOTIFY changed)
  Q_PROPERTY(bool recording READ recording NOTIFY changed)

 public:
  /// Both must outlive it.
  SettingsViewModel(WindowManagerController& controller, KeyMonitor& monitor);

  QString padding() const { return QString::fromStdString(model_.padding()); }
  bool canIncrementPadding() const { return model_.canIncrementPadding(); }
  bool canDecrementPadding() const { return model_.canDecrementPadding(); }
  bool startOnLogin() const { return controller_.startOnLoginEnabled(); }
  QString startOnLoginError() const { return QString::fromStdString(model_.startOnLoginError()); }
  QAbstractListModel* shortcuts() { return &shortcuts_; }
  QString shortcutError() const;
  bool recording() const { return model_.recorder().recordingAction().has_value(); }

  Q_INVOKABLE void incrementPadding() { model_.incrementPadding(); }
  Q_INVOKABLE void decrementPadding() { model_.decrementPadding(); }
  Q_INVOKABLE void toggleStartOnLogin() { controller_.setStartOnLoginEnabled(!controller_.startOnLoginEnabled()); }
  Q_INVOKABLE void openLoginItemsSettings() { controller_.openLoginItemsSettings(); }
  /// The button of the row at `index`, from 0 on.
  Q_INVOKABLE void toggleRecording(int index);
  Q_INVOKABLE void resetShortcuts() { model_.recorder().resetToDefaults(); }

  /// The window goes away.
  void disappear() { model_.disappear(); }

 Q_SIGNALS:
  void changed();

 private:
  WindowManagerController& controller_;
  SettingsWindowModel model_;
  ShortcutRows shortcuts_;
  PublishedChanges changes_;
};

}  // namespace tilora::app
