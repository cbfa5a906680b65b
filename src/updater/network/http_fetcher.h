// Getting a small file over HTTP or HTTPS.
#pragma once

#include <QNetworkAccessManager>
#include <QSslConfiguration>
#include <chrono>

#include "updater/surroundings.h"

namespace tilora::updater {

/// What a fetch may cost. A feed has some hundred bytes and comes within a second.
struct FetchLimits {
  /// From the start to the last byte, redirections included.
  std::chrono::milliseconds time = std::chrono::seconds(60);
  /// Of the body in bytes, unpacked.
  qint64 bodySize = qint64{64} * 1024;
  int redirections = 10;
};

/// A plain GET, without cache, cookies and credentials. The system's certificates and proxies count. A redirection is followed unless it
/// leads from HTTPS to HTTP, or to anything else. A fetch ends with the fetcher, without an answer. Needs the event loop of its thread.
class HttpFetcher : public Fetcher {
 public:
  explicit HttpFetcher(const FetchLimits& limits = {}, const QSslConfiguration& tls = QSslConfiguration::defaultConfiguration())
      : limits_(limits), tls_(tls) {}

  void fetch(const std::string& address, std::function<void(Fetched)> done) override;

 private:
  const FetchLimits limits_;
  const QSslConfiguration tls_;
  QNetworkAccessManager manager_;
};

}  // namespace tilora::updater
