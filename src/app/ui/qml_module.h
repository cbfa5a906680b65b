// The QML module of the views.
#pragma once

#include <QQmlEngine>
#include <memory>

namespace tilora::app {

/// An engine that knows the module `Tilora` and draws with the software renderer.
std::unique_ptr<QQmlEngine> makeEngine();

}  // namespace tilora::app
