// The test's side of a test application: one JSON object a line, there and back.
#include "harness/test_client.h"

#include <unistd.h>

#include <csignal>
#include <stdexcept>

namespace tilora::harness {

namespace {

nlohmann::json described(const WindowOptions& options) {
  nlohmann::json value = {{"op", "open"},
                          {"title", options.title},
                          {"instance", options.instance},
                          {"class", options.className},
                          {"role", options.role},
                          {"type", options.type},
                          {"area", {options.geometry.x, options.geometry.y, options.geometry.width, options.geometry.height}},
                          {"positioned", options.positioned},
                          {"minimum", {options.minWidth, options.minHeight}},
                          {"maximum", {options.maxWidth, options.maxHeight}},
                          {"base", {options.baseWidth, options.baseHeight}},
                          {"increment", {options.widthIncrement, options.heightIncrement}},
                          {"gravity", options.gravity},
                          {"undecorated", options.undecorated},
                          {"transientFor", options.transientFor},
                          {"leader", options.leader},
                          {"declaresProcess", options.declaresProcess},
                          {"machine", options.machine},
                          {"states", options.states},
                          {"strut", options.strut},
                          {"stubborn", options.stubborn},
                          {"immovable", options.immovable},
                          {"overrideRedirect", options.overrideRedirect},
                          {"mapped", options.mapped}};
  if (options.processId) value["processId"] = *options.processId;
  if (options.shadows) value["shadows"] = {options.shadows->left, options.shadows->right, options.shadows->top, options.shadows->bottom};
  return value;
}

}  // namespace

TestClient::TestClient(Session& session, std::chrono::milliseconds patience)
    : requests_(Pipe::make()), answers_(Pipe::make()), patience_(patience) {
  process_.emplace(ProcessOptions{.arguments = {TILORA_TEST_CLIENT},
                                  .environment = session.environment(),
                                  .descriptors = {{0, requests_.reader.number()}, {1, answers_.writer.number()}},
                                  .log = session.home().path() / "clients.log"});
  requests_.reader.close();
  answers_.writer.close();
}

nlohmann::json TestClient::ask(const nlohmann::json& request) {
  const std::string line = request.dump() + "\n";
  if (::write(requests_.writer.number(), line.data(), line.size()) != static_cast<ssize_t>(line.size())) {
    throw std::runtime_error("the test application does not listen");
  }
  std::array<char, 4096> buffer{};
  std::size_t end = 0;
  while ((end = pending_.find('\n')) == std::string::npos) {
    if (!waitReadable(answers_.reader.number(), patience_)) throw std::runtime_error("the test application does not answer");
    const ssize_t count = ::read(answers_.reader.number(), buffer.data(), buffer.size());
    if (count <= 0) throw std::runtime_error("the test application is gone: " + process_->output());
    pending_.append(buffer.data(), static_cast<std::size_t>(count));
  }
  nlohmann::json answer = nlohmann::json::parse(pending_.substr(0, end));
  pending_.erase(0, end + 1);
  return answer;
}

xcb_window_t TestClient::open(const WindowOptions& options) { return ask(described(options)).at("window").get<xcb_window_t>(); }

void TestClient::map(xcb_window_t window) { ask({{"op", "map"}, {"window", window}}); }

void TestClient::withdraw(xcb_window_t window) { ask({{"op", "withdraw"}, {"window", window}}); }

void TestClient::destroy(xcb_window_t window) { ask({{"op", "destroy"}, {"window", window}}); }

void TestClient::setTitle(xcb_window_t window, const std::string& title) {
  ask({{"op", "setTitle"}, {"window", window}, {"title", title}});
}

void TestClient::configure(xcb_window_t window, const PixelRect& area) {
  ask({{"op", "configure"}, {"window", window}, {"area", {area.x, area.y, area.width, area.height}}});
}

void TestClient::setStrut(xcb_window_t window, const std::array<std::uint32_t, 12>& strut) {
  ask({{"op", "setStrut"}, {"window", window}, {"strut", strut}});
}

std::vector<int> TestClient::keysPressed(xcb_window_t window) {
  return ask({{"op", "keysPressed"}, {"window", window}}).at("keys").get<std::vector<int>>();
}

bool TestClient::grabKey(int keycode, int modifiers) {
  return ask({{"op", "grabKey"}, {"keycode", keycode}, {"modifiers", modifiers}}).at("granted").get<bool>();
}

void TestClient::suspend() { process_->signal(SIGSTOP); }

void TestClient::resume() { process_->signal(SIGCONT); }

}  // namespace tilora::harness
