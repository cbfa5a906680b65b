// The texts are shown as they are, whatever tags they hold.
#include "app/message_box_alert.h"

#include <QEvent>
#include <QPushButton>
#include <QTimer>
#include <QWindow>
#include <chrono>
#include <utility>

namespace tilora::app {
namespace {

/// Hides the window of a box that has an answer, where Qt would destroy it. From the window manager, a close is the answer.
class EndWithoutDestruction : public QObject {
 public:
  explicit EndWithoutDestruction(QMessageBox& box) : QObject(&box), box_(box) {}

  bool eventFilter(QObject* /*window*/, QEvent* event) override {
    if (event->type() != QEvent::Close) return false;
    event->accept();
    box_.hide();
    // Last: the box may be gone after that.
    if (box_.clickedButton() == nullptr && !std::exchange(rejects_, true)) box_.reject();
    return true;
  }

 private:
  QMessageBox& box_;
  bool rejects_ = false;
};

QString verbatim(const std::string& text) { return QString::fromStdString(text).toHtmlEscaped(); }

std::unique_ptr<QMessageBox> boxFor(const updater::UpdateAlert& alert) {
  auto box = std::make_unique<QMessageBox>();
  box->setWindowTitle(QStringLiteral("Tilora"));
  box->setIcon(QMessageBox::Information);
  box->setText(QStringLiteral("<b>%1</b>").arg(verbatim(alert.messageText)));
  box->setInformativeText(QStringLiteral("<span>%1</span>").arg(verbatim(alert.informativeText)));
  // One role for both: their order is the same on every desktop then.
  auto* first = box->addButton(QString::fromStdString(alert.firstButton), QMessageBox::ActionRole);
  auto* second = box->addButton(QString::fromStdString(alert.secondButton), QMessageBox::ActionRole);
  box->setDefaultButton(first);
  box->setEscapeButton(second);
  box->setWindowModality(Qt::ApplicationModal);
  box->setWindowFlag(Qt::WindowStaysOnTopHint);
  return box;
}

}  // namespace

void MessageBoxAlert::show(const updater::UpdateAlert& alert, std::function<void(updater::AlertAnswer)> done) {
  box_ = boxFor(alert);
  QObject::connect(box_.get(), &QMessageBox::finished, box_.get(), [this, done = std::move(done)] {
    const bool isFirst = box_->clickedButton() == box_->defaultButton();
    const auto then = done;
    // This runs in a signal of the box. A window manager may still look at windows that the key which answered made Qt announce.
    closed_ = std::move(box_);
    QObject::disconnect(closed_.get(), &QMessageBox::finished, nullptr, nullptr);
    QTimer::singleShot(std::chrono::seconds(1), closed_.get(), [this] { closed_.release()->deleteLater(); });
    then(isFirst ? updater::AlertAnswer::firstButton : updater::AlertAnswer::secondButton);
  });
  comes_();
  box_->show();
  if (QWindow* window = box_->windowHandle()) window->installEventFilter(new EndWithoutDestruction(*box_));
  box_->raise();
}

}  // namespace tilora::app
