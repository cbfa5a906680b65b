// Alerts as message boxes of the toolkit.
#pragma once

#include <QMessageBox>
#include <memory>

#include "updater/surroundings.h"

namespace tilora::app {

/// The box is modal to the windows of this program and stays above those of others; the event loop goes on meanwhile. One alert at a time.
/// The box goes with the alert. Main thread of a program with a QApplication only.
class MessageBoxAlert : public updater::Alert {
 public:
  void show(const updater::UpdateAlert& alert, std::function<void(updater::AlertAnswer)> done) override;

 private:
  std::unique_ptr<QMessageBox> box_;
};

}  // namespace tilora::app
