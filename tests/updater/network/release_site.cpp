// Reading requests and sending scripted bytes.
#include "release_site.h"

#include <QHostAddress>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslServer>
#include <QTimer>
#include <stdexcept>

#include "test_certificate.h"

namespace tilora::updater {

QByteArray http(const QByteArray& status, const QByteArray& body, const QByteArray& headers) {
  return "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\nConnection: close\r\n" + headers + "\r\n" +
         body;
}

Answer whole(const QByteArray& bytes) {
  return [bytes](QTcpSocket& socket) {
    socket.write(bytes);
    socket.disconnectFromHost();
  };
}

Answer silence() {
  return [](QTcpSocket&) {};
}

Answer dribble(const QByteArray& bytes, std::chrono::milliseconds interval) {
  return [bytes, interval](QTcpSocket& socket) {
    auto timer = std::make_unique<QTimer>();
    QObject::connect(timer.get(), &QTimer::timeout, &socket, [&socket, bytes, sent = qsizetype{0}]() mutable {
      if (sent == bytes.size()) return socket.disconnectFromHost();
      socket.write(bytes.mid(sent, 1));
      ++sent;
    });
    timer->start(interval);
    timer.release()->setParent(&socket);
  };
}

Answer endless(const QByteArray& bytes, const QByteArray& more) {
  return [bytes, more](QTcpSocket& socket) {
    // At a steady pace: what a socket under TLS still has to send is not to be told from the outside.
    auto* pace = new QTimer(&socket);
    QObject::connect(pace, &QTimer::timeout, &socket, [&socket, more] { socket.write(more); });
    pace->start(std::chrono::milliseconds(1));
    socket.write(bytes + more);
  };
}

Answer redirection(const QByteArray& status, const QByteArray& location) {
  return whole(http(status, "<p>It is elsewhere.</p>", "Location: " + location + "\r\n"));
}

QSslConfiguration servingWith(const char* certificate) {
  QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
  tls.setLocalCertificate(QSslCertificate(certificate));
  tls.setPrivateKey(QSslKey(testKey, QSsl::Ec));
  return tls;
}

QSslConfiguration trusting(const char* certificate) {
  QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
  tls.setCaCertificates({QSslCertificate(certificate)});
  return tls;
}

ReleaseSite::ReleaseSite(std::optional<QSslConfiguration> tls, const QString& host, quint16 port) : isSecure_(tls.has_value()) {
  if (tls) {
    auto server = std::make_unique<QSslServer>();
    server->setSslConfiguration(*tls);
    server_ = std::move(server);
  } else {
    server_ = std::make_unique<QTcpServer>();
  }
  QObject::connect(server_.get(), &QTcpServer::pendingConnectionAvailable, server_.get(), [this] {
    while (QTcpSocket* socket = server_->nextPendingConnection()) welcome(*socket);
  });
  if (!server_->listen(QHostAddress(host), port)) throw std::runtime_error(server_->errorString().toStdString());
}

std::string ReleaseSite::root() const {
  const std::string port = std::to_string(server_->serverPort());
  if (isSecure_) return "https://localhost:" + port;
  return "http://" + server_->serverAddress().toString().toStdString() + ":" + port;
}

void ReleaseSite::welcome(QTcpSocket& socket) {
  ++openConnections_;
  QObject::connect(&socket, &QTcpSocket::disconnected, server_.get(), [this, &socket] {
    --openConnections_;
    socket.deleteLater();
  });
  QObject::connect(&socket, &QTcpSocket::readyRead, server_.get(), [this, &socket] { read(socket); });
  read(socket);
}

void ReleaseSite::read(QTcpSocket& socket) {
  const qsizetype end = socket.peek(qint64{1} << 16U).indexOf("\r\n\r\n");
  if (end < 0) return;
  const QByteArray head = socket.read(end + 4).chopped(4);
  requests_.push_back(head);
  const QByteArray path = head.split(' ').value(1);
  const auto answer = answers_.find(path);
  if (answer != answers_.end()) {
    answer->second(socket);
  } else {
    whole(http("404 Not Found", "<!DOCTYPE html><title>Nothing here</title>"))(socket);
  }
}

}  // namespace tilora::updater
