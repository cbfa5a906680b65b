// A real HTTP or HTTPS server on the loopback that answers as badly as a test wants.
#pragma once

#include <QByteArray>
#include <QSslConfiguration>
#include <QTcpServer>
#include <QTcpSocket>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace tilora::updater {

/// What a server does with a connection once it has read a request.
using Answer = std::function<void(QTcpSocket&)>;

/// The bytes of an answer with its length. `headers` are whole lines.
QByteArray http(const QByteArray& status, const QByteArray& body, const QByteArray& headers = {});
/// Sends `bytes` and closes the connection.
Answer whole(const QByteArray& bytes);
/// Says nothing and leaves the connection open.
Answer silence();
/// Sends `bytes` one at a time.
Answer dribble(const QByteArray& bytes, std::chrono::milliseconds interval);
/// Sends `bytes`, and `more` for ever.
Answer endless(const QByteArray& bytes, const QByteArray& more);
/// Sends the client to another address.
Answer redirection(const QByteArray& status, const QByteArray& location);

/// Configuration of a server that proves itself with `certificate`.
QSslConfiguration servingWith(const char* certificate);
/// Configuration of a client that trusts `certificate` alone.
QSslConfiguration trusting(const char* certificate);

/// Needs the event loop of its thread.
class ReleaseSite {
 public:
  /// Serves HTTPS when it has a `tls`. `host` and `port` say where; any free port when it is 0.
  explicit ReleaseSite(std::optional<QSslConfiguration> tls = {}, const QString& host = QStringLiteral("127.0.0.1"), quint16 port = 0);

  quint16 port() const { return server_->serverPort(); }
  /// "http://127.0.0.1:4711"; HTTPS sites are called "localhost".
  std::string root() const;
  /// Answers requests for `path`; for any other path the answer is 404 with a page.
  void serve(const QByteArray& path, Answer answer) { answers_[path] = std::move(answer); }
  /// The heads of all requests so far, less their last empty line.
  const std::vector<QByteArray>& requests() const { return requests_; }
  int openConnections() const { return openConnections_; }

 private:
  void welcome(QTcpSocket& socket);
  void read(QTcpSocket& socket);

  bool isSecure_;
  std::map<QByteArray, Answer> answers_;
  std::vector<QByteArray> requests_;
  int openConnections_ = 0;
  std::unique_ptr<QTcpServer> server_;
};

}  // namespace tilora::updater
