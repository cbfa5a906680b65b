// Whether Tilora may control windows here, as the page for it binds it.
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QStringList>
#include <functional>
#include <string>
#include <vector>

#include "app/ui/published_changes.h"

namespace tilora::app {

/// The user's consent and what the session lacks.
struct AccessParts {
  std::function<bool()> isAllowed;
  std::function<void(bool)> allow;
  /// One sentence each.
  std::function<std::vector<std::string>()> missing;
};

class AccessViewModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the program")
  Q_PROPERTY(bool allowed READ allowed NOTIFY changed)
  Q_PROPERTY(QStringList missing READ missing NOTIFY changed)

 public:
  /// The controller must outlive it.
  AccessViewModel(WindowManagerController& controller, AccessParts parts);

  bool allowed() const { return parts_.isAllowed(); }
  QStringList missing() const;

  Q_INVOKABLE void toggleAllowed();
  /// Asks anew what the session lacks.
  Q_INVOKABLE void refresh() { Q_EMIT changed(); }

 Q_SIGNALS:
  void changed();

 private:
  AccessParts parts_;
  PublishedChanges changes_;
};

}  // namespace tilora::app
