// Opening addresses with the opener of the freedesktop.org utilities.
#include "app/background_shell.h"

#include <QProcess>
#include <QString>
#include <QUrl>

namespace tilora::app {

void BackgroundShell::openURL(std::string_view url) {
  const QUrl parsed(QString::fromUtf8(url.data(), static_cast<qsizetype>(url.size())), QUrl::StrictMode);
  if (!parsed.isValid() || parsed.scheme().isEmpty()) return;
  QProcess::startDetached(QStringLiteral("xdg-open"), {parsed.toString(QUrl::FullyEncoded)});
}

}  // namespace tilora::app
