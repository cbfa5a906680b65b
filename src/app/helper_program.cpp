// Starting a helper and hearing of its end.
#include "app/helper_program.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <utility>

namespace tilora::app {

QString helperPath(const QString& name) {
  const QDir folder(QCoreApplication::applicationDirPath());
  QString beside = folder.filePath(name);
  if (QFileInfo(beside).isExecutable()) return beside;
  return QDir::cleanPath(folder.filePath(QStringLiteral(TILORA_HELPERS "/") + name));
}

HelperProgram::HelperProgram(QString path) : path_(std::move(path)) {}

HelperProgram::~HelperProgram() {
  if (!process_) return;
  process_->disconnect();
  process_->terminate();
  constexpr int forGoodManners = 1000;
  if (!process_->waitForFinished(forGoodManners)) process_->kill();
}

void HelperProgram::run(const QStringList& arguments, std::function<void(const HelperEnd&)> ended,
                        std::optional<std::chrono::milliseconds> patience) {
  if (isRunning()) return;
  ended_ = std::move(ended);
  process_ = std::make_unique<QProcess>();
  QProcess* const process = process_.get();
  // Queued: starting may fail before this call returns.
  QObject::connect(
      process, &QProcess::errorOccurred, process,
      [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) end(std::nullopt);
      },
      Qt::QueuedConnection);
  QObject::connect(process, &QProcess::finished, process, [this](int status, QProcess::ExitStatus how) {
    end(how == QProcess::NormalExit ? std::optional(status) : std::nullopt);
  });
  if (patience) QTimer::singleShot(*patience, process, [process] { process->kill(); });
  process->start(path_, arguments, QIODevice::ReadOnly);
}

void HelperProgram::end(std::optional<int> status) {
  const HelperEnd how = {.status = status, .output = process_->readAllStandardOutput(), .errors = process_->readAllStandardError()};
  // This runs in a signal of the process.
  process_.release()->deleteLater();
  std::exchange(ended_, nullptr)(how);
}

}  // namespace tilora::app
