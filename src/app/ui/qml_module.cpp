// Registering the module, once in a process.
#include "app/ui/qml_module.h"

#include <QQuickWindow>
#include <utility>

// NOLINTNEXTLINE(readability-identifier-naming): made by the build, and named by it.
extern void qml_register_types_Tilora();

static void initializeResources() {
  Q_INIT_RESOURCE(qmake_Tilora);
  Q_INIT_RESOURCE(tilora_ui_raw_qml_0);
  Q_INIT_RESOURCE(qmlcache_tilora_ui);
}

namespace tilora::app {
namespace {

void initializeModule() {
  static bool done = false;
  if (std::exchange(done, true)) return;
  qml_register_types_Tilora();
  initializeResources();
  QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

}  // namespace

std::unique_ptr<QQmlEngine> makeEngine() {
  initializeModule();
  auto engine = std::make_unique<QQmlEngine>();
  engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
  return engine;
}

}  // namespace tilora::app
