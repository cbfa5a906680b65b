// The event loop of the resident process on macOS.
#include <QApplication>

#include "app/mac_program.h"
#include "app/program.h"
#include "app/standard_streams.h"
#include "app/termination_signals.h"

namespace tilora::app {

int runProgram(int argc, char** argv, const std::string& updateSite) {
  openStandardStreams();
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Tilora"));
  QApplication::setApplicationVersion(QStringLiteral(TILORA_VERSION));
  QApplication::setQuitOnLastWindowClosed(false);
  const TerminationSignals signals([] { QCoreApplication::exit(0); });
  const MacProgram program(updateSite);
  return QCoreApplication::exec();
}

}  // namespace tilora::app
