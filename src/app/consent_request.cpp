// Starting the dialog and reading its exit status.
#include "app/consent_request.h"

namespace tilora::app {

ConsentRequest::ConsentRequest() : ConsentRequest(helperPath(QStringLiteral("tilora-consent"))) {}

ConsentRequest::ConsentRequest(QString program) : dialog_(std::move(program)) {}

void ConsentRequest::ask(const std::vector<std::string>& missing, const std::function<void(bool)>& answer) {
  QStringList sentences;
  for (const auto& sentence : missing) sentences << QString::fromStdString(sentence);
  dialog_.run(sentences, [answer](const HelperEnd& end) { answer(end.status == 0); });
}

}  // namespace tilora::app
