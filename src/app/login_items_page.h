// Where each desktop lets the user choose what starts with the session.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

namespace tilora::app {

/// The commands that open that page, the preferred one first. `currentDesktop` is $XDG_CURRENT_DESKTOP: names between colons. Empty for a
/// desktop that has no such page.
std::vector<QStringList> loginItemsCommands(const QString& currentDesktop);

/// Opens the page with the first command that is installed; without one, opens `folder`, where the entries are, in the file manager.
void openLoginItemsPage(const QString& folder);

}  // namespace tilora::app
