// Runs the tests of the single components, which are QML as they are, in a program with a GUI that no display shows.
#include <QtQuickTest>

#include "components_setup.h"

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  tilora::app::ComponentsSetup setup;
  return quick_test_main_with_setup(argc, argv, "components", TILORA_COMPONENT_TESTS, &setup);
}
