// One request, its limits, and what counts as an answer.
#include "updater/network/http_fetcher.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>
#include <memory>
#include <utility>

#include "updater/one_line.h"

namespace tilora::updater {
namespace {

constexpr std::size_t mostCharactersOfError = 200;

/// A fetch under way. The connections of its reply own it.
struct Transfer {
  QByteArray body;
  /// Why the fetch was given up, if it was.
  QString givenUp;
  std::function<void(Fetched)> done;
};

QNetworkRequest requestFor(const QUrl& url, const FetchLimits& limits, const QSslConfiguration& tls) {
  QNetworkRequest request(url);
  request.setSslConfiguration(tls);
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
  request.setMaximumRedirectsAllowed(limits.redirections);
  request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  // Qt ends a body that unpacks to far more than it was as if it were whole; the limit of the fetch is a failure.
  request.setDecompressedSafetyCheckThreshold(-1);
  return request;
}

/// Whether an answer came whole, whatever its status: Qt reports many of those as errors of the content or of the server, and the others as
/// an invalid operation.
bool isAnswered(const QNetworkReply& reply) {
  const QNetworkReply::NetworkError error = reply.error();
  if (error == QNetworkReply::NoError) return true;
  constexpr int firstErrorStatus = 400;
  const QVariant status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute);
  // Under a good status, the trouble is with the content: it could not be unpacked.
  const bool isOfTheStatus = (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError) ||
                             (error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError);
  if (isOfTheStatus) return status.toInt() >= firstErrorStatus;
  return error == QNetworkReply::ProtocolInvalidOperationError && status.isValid();
}

Fetched failure(const QString& why) { return {.body = std::nullopt, .error = oneLine(why.toStdString(), mostCharactersOfError)}; }

Fetched outcome(const QNetworkReply& reply, const Transfer& transfer) {
  if (!transfer.givenUp.isEmpty()) return failure(transfer.givenUp);
  if (!isAnswered(reply)) return failure(reply.errorString());
  return {.body = transfer.body.toStdString(), .error = {}};
}

}  // namespace

void HttpFetcher::fetch(const std::string& address, std::function<void(Fetched)> done) {
  const QUrl url(QString::fromStdString(address), QUrl::StrictMode);
  if (!url.isValid() || (url.scheme() != QLatin1String("http") && url.scheme() != QLatin1String("https")) || url.host().isEmpty()) {
    QMetaObject::invokeMethod(
        &manager_, [done = std::move(done)] { done(failure(QStringLiteral("unsupported address."))); }, Qt::QueuedConnection);
    return;
  }
  QNetworkReply* reply = manager_.get(requestFor(url, limits_, tls_));
  const auto transfer = std::make_shared<Transfer>();
  transfer->done = std::move(done);
  const auto giveUp = [reply, transfer](const QString& why) {
    transfer->givenUp = why;
    reply->abort();
  };
  // Read as it comes and no further than to the first byte too many.
  reply->setReadBufferSize(limits_.bodySize);
  QObject::connect(reply, &QNetworkReply::readyRead, reply, [reply, transfer, giveUp, limit = limits_.bodySize] {
    transfer->body += reply->read(limit + 1 - transfer->body.size());
    if (transfer->body.size() > limit) giveUp(QStringLiteral("the answer is larger than %1 bytes.").arg(limit));
  });
  QObject::connect(reply, &QNetworkReply::finished, reply, [reply, transfer] {
    reply->deleteLater();
    const auto then = std::exchange(transfer->done, nullptr);
    if (then) then(outcome(*reply, *transfer));
  });
  QTimer::singleShot(limits_.time, reply, [giveUp, limit = limits_.time] {
    giveUp(QStringLiteral("no whole answer within %1 seconds.").arg(std::chrono::duration<double>(limit).count()));
  });
}

}  // namespace tilora::updater
