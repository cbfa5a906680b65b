// Alerts as message boxes of the toolkit.
#pragma once

#include <QMessageBox>
#include <functional>
#include <memory>
#include <utility>

#include "updater/surroundings.h"

namespace tilora::app {

/// The box is modal to the windows of this program and stays above those of others; the event loop goes on meanwhile. One alert at a time.
/// The box goes with the alert, and its window a second after its answer. Main thread of a program with a QApplication only.
class MessageBoxAlert : public updater::Alert {
 public:
  /// `comes` is called before a box is shown: who has grabbed the keyboard or the pointer has to let go of them.
  explicit MessageBoxAlert(std::function<void()> comes = [] {}) : comes_(std::move(comes)) {}

  void show(const updater::UpdateAlert& alert, std::function<void(updater::AlertAnswer)> done) override;

 private:
  const std::function<void()> comes_;
  std::unique_ptr<QMessageBox> box_;
  /// The one before, hidden: its window goes a second after the answer.
  std::unique_ptr<QMessageBox> closed_;
};

}  // namespace tilora::app
