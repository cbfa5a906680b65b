// What the tests of the components need before they are loaded.
#pragma once

#include <QFont>
#include <QGuiApplication>
#include <QQmlEngine>

#include "app/ui/qml_module.h"

namespace tilora::app {

/// Its slots are called by Qt Quick Test, by their names.
class ComponentsSetup : public QObject {
  Q_OBJECT

 public Q_SLOTS:
  static void applicationAvailable() {
    QGuiApplication::setFont(QFont(QStringLiteral("DejaVu Sans")));
    makeEngine();
  }
  static void qmlEngineAvailable(QQmlEngine* engine) { engine->addImportPath(QStringLiteral("qrc:/qt/qml")); }
};

}  // namespace tilora::app
