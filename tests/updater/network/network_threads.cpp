// Waits at the end of the tests for the threads of Qt's network classes: Qt waits until such a thread has done its work, not until it has
// freed what OpenSSL keeps for each thread, and a process that ends in between is reported to leak it.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <thread>

namespace tilora::updater {
namespace {

/// False where the system has no directory of threads.
bool hasNetworkThread() {
  std::error_code error;
  const std::filesystem::directory_iterator threads("/proc/self/task", error);
  if (error) return false;
  return std::any_of(begin(threads), end(threads), [](const std::filesystem::directory_entry& thread) {
    std::string name;
    std::ifstream comm(thread.path() / "comm");
    std::getline(comm, name);
    return name.starts_with("QNetwork");
  });
}

class NetworkThreads : public testing::Environment {
 public:
  void TearDown() override {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (hasNetworkThread()) {
      ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "a thread outlives its fetcher";
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  }
};

// GoogleTest owns it.
[[maybe_unused]] const testing::Environment* const networkThreads = testing::AddGlobalTestEnvironment(new NetworkThreads);

}  // namespace
}  // namespace tilora::updater
