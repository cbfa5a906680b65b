// The entry of the program.
#include "app/program.h"

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("tilora"));
  return tilora::app::runProgram(application);
}
