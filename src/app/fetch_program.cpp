// The end of the program is the answer.
#include "app/fetch_program.h"

namespace tilora::app {
namespace {

/// The program has a limit of its own, and keeps it unless it hangs.
constexpr auto patience = std::chrono::minutes(2);

updater::Fetched fetchedBy(const HelperEnd& end) {
  if (end.status == 0) return {.body = end.output.toStdString(), .error = {}};
  const QByteArray lines = end.errors.trimmed();
  const std::string error = lines.mid(lines.lastIndexOf('\n') + 1).toStdString();
  return {.body = std::nullopt, .error = end.status && !error.empty() ? error : "the program that fetches the feed failed."};
}

}  // namespace

void FetchProgram::fetch(const std::string& address, std::function<void(updater::Fetched)> done) {
  program_.run(
      {QString::fromStdString(address)}, [done = std::move(done)](const HelperEnd& end) { done(fetchedBy(end)); }, patience);
}

}  // namespace tilora::app
