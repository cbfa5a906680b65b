// Starting the dialog and reading its exit status.
#include "app/consent_request.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace tilora::app {
namespace {

/// The dialog beside this program, as it is built, or where it is installed.
QString dialogProgram() {
  const QDir folder(QCoreApplication::applicationDirPath());
  QString beside = folder.filePath(QStringLiteral("tilora-consent"));
  if (QFileInfo(beside).isExecutable()) return beside;
  return QDir::cleanPath(folder.filePath(QStringLiteral("../libexec/tilora/tilora-consent")));
}

}  // namespace

ConsentRequest::ConsentRequest() : ConsentRequest(dialogProgram()) {}

ConsentRequest::ConsentRequest(QString program) : program_(std::move(program)) {}

ConsentRequest::~ConsentRequest() {
  if (dialog_.state() == QProcess::NotRunning) return;
  dialog_.disconnect();
  dialog_.terminate();
  if (!dialog_.waitForFinished(1000)) dialog_.kill();
}

void ConsentRequest::ask(const std::vector<std::string>& missing, const std::function<void(bool)>& answer) {
  if (dialog_.state() != QProcess::NotRunning) return;
  QStringList sentences;
  for (const auto& sentence : missing) sentences << QString::fromStdString(sentence);
  dialog_.disconnect();
  QObject::connect(&dialog_, &QProcess::errorOccurred, &dialog_, [answer](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart) answer(false);
  });
  QObject::connect(&dialog_, &QProcess::finished, &dialog_,
                   [answer](int status, QProcess::ExitStatus end) { answer(end == QProcess::NormalExit && status == 0); });
  dialog_.setStandardOutputFile(QProcess::nullDevice());
  dialog_.setStandardErrorFile(QProcess::nullDevice());
  dialog_.start(program_, sentences, QIODevice::NotOpen);
}

}  // namespace tilora::app
