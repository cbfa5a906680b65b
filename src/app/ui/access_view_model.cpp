// Translating the page for QML.
#include "app/ui/access_view_model.h"

#include <utility>

namespace tilora::app {

AccessViewModel::AccessViewModel(WindowManagerController& controller, AccessParts parts)
    : parts_(std::move(parts)), changes_(controller, [this] { refresh(); }) {}

QStringList AccessViewModel::missing() const {
  QStringList sentences;
  for (const std::string& sentence : parts_.missing()) sentences << QString::fromStdString(sentence);
  return sentences;
}

void AccessViewModel::toggleAllowed() {
  parts_.allow(!parts_.isAllowed());
  refresh();
}

}  // namespace tilora::app
