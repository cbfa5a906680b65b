// Writes what lies at an address to standard output: tilora-fetch ADDRESS. Status 1 when it cannot be had; the last line of standard error
// says why.
#include <QCoreApplication>
#include <cstdio>

#include "updater/network/http_fetcher.h"

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() != 2) {
    std::fputs("usage: tilora-fetch ADDRESS\n", stderr);
    return 2;
  }
  tilora::updater::HttpFetcher fetcher;
  fetcher.fetch(arguments[1].toStdString(), [](const tilora::updater::Fetched& fetched) {
    if (fetched.body) {
      const bool isWritten =
          std::fwrite(fetched.body->data(), 1, fetched.body->size(), stdout) == fetched.body->size() && std::fflush(stdout) == 0;
      QCoreApplication::exit(isWritten ? 0 : 1);
    } else {
      std::fprintf(stderr, "%s\n", fetched.error.c_str());
      QCoreApplication::exit(1);
    }
  });
  return QCoreApplication::exec();
}
