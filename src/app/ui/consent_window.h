// The dialog that asks for the user's consent.
#pragma once

#include <QQuickView>
#include <QStringList>

namespace tilora::app {

/// Asks whether Tilora may arrange windows. With `missing`, one sentence each, it says instead what this session lacks, and there is
/// nothing to agree to.
class ConsentWindow : public QQuickView {
  Q_OBJECT

 public:
  ConsentWindow(QQmlEngine& engine, const QStringList& missing);

 Q_SIGNALS:
  /// The user's first answer; a dialog that is closed in another way has none.
  void answered(bool agreed);
};

}  // namespace tilora::app
