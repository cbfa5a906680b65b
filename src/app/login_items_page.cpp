// The desktops and their programs.
#include "app/login_items_page.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>
#include <array>

namespace tilora::app {
namespace {

struct Page {
  const char* desktop;
  const char* command;
};

constexpr std::array pages = {
    Page{"KDE", "systemsettings kcm_autostart"},     Page{"KDE", "systemsettings5 kcm_autostart"},
    Page{"KDE", "kcmshell5 kcm_autostart"},          Page{"XFCE", "xfce4-session-settings"},
    Page{"MATE", "mate-session-properties"},         Page{"LXQt", "lxqt-config-session"},
    Page{"X-Cinnamon", "cinnamon-settings startup"}, Page{"Cinnamon", "cinnamon-settings startup"},
    Page{"GNOME", "gnome-session-properties"},       Page{"GNOME", "gnome-tweaks"},
};

}  // namespace

std::vector<QStringList> loginItemsCommands(const QString& currentDesktop) {
  std::vector<QStringList> commands;
  for (const QString& name : currentDesktop.split(QLatin1Char(':'), Qt::SkipEmptyParts)) {
    for (const auto& page : pages) {
      if (name.compare(QLatin1String(page.desktop), Qt::CaseInsensitive) == 0) {
        commands.push_back(QString::fromLatin1(page.command).split(QLatin1Char(' ')));
      }
    }
  }
  return commands;
}

void openLoginItemsPage(const QString& folder) {
  for (const QStringList& command : loginItemsCommands(qEnvironmentVariable("XDG_CURRENT_DESKTOP"))) {
    const QString program = QStandardPaths::findExecutable(command.first());
    if (!program.isEmpty() && QProcess::startDetached(program, command.mid(1))) return;
  }
  if (folder.isEmpty() || !QDir().mkpath(folder)) return;
  QProcess::startDetached(QStringLiteral("xdg-open"), {QUrl::fromLocalFile(folder).toString(QUrl::FullyEncoded)});
}

}  // namespace tilora::app
