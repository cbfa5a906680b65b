// Calls a fuzz target with the same inputs every time: the files of a folder, and those with a few bytes changed.
// Usage: NAME_fuzz_run FOLDER COUNT
#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

// NOLINTNEXTLINE(readability-identifier-naming): the name is libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::string> filesIn(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> paths;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) paths.push_back(entry.path());
  }
  std::sort(paths.begin(), paths.end());
  std::vector<std::string> contents;
  for (const auto& path : paths) {
    std::ifstream stream(path, std::ios::binary);
    contents.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
  }
  return contents;
}

/// Bytes that mean something to a reader of JSON, of addresses or of UTF-8.
constexpr std::string_view telling = "\"\\{}[]:,/?#@%.eE+-0u \n\x1b\x7f\x80\xbf\xc2\xe2\xf0\xff";

class Mutations {
 public:
  /// `texts` must not be empty.
  Mutations(std::vector<std::string> texts, std::uint32_t seed) : texts_(std::move(texts)), random_(seed) {}

  std::string next() {
    std::string text = texts_.at(below(texts_.size()));
    for (std::size_t changes = below(8); changes > 0; --changes) change(text);
    return text;
  }

 private:
  std::size_t below(std::size_t limit) { return random_() % limit; }
  char anyByte() { return below(4) == 0 ? static_cast<char>(below(256)) : telling[below(telling.size())]; }
  void change(std::string& text) {
    const std::size_t at = below(text.size() + 1);
    switch (below(5)) {
      case 0:
        text.resize(at);
        break;
      case 1:
        text.erase(at, below(5));
        break;
      case 2:
        text.insert(at, below(5), anyByte());
        break;
      case 3:
        text.insert(at, text.substr(below(text.size() + 1), below(20)));
        break;
      default:
        if (at < text.size()) text[at] = anyByte();
    }
  }

  const std::vector<std::string> texts_;
  std::mt19937 random_;
};

/// The input at hand, for the last words of a run that finds something.
const std::string* current = nullptr;

void tellInput(int signal) {
  std::fprintf(stderr, "what must hold does not, for this input of %zu bytes:\n", current->size());
  std::fwrite(current->data(), 1, current->size(), stderr);
  std::signal(signal, SIG_DFL);
}

void call(const std::string& input) {
  current = &input;
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

}  // namespace

int main(int argc, char** argv) {
  const long count = argc == 3 ? std::strtol(argv[2], nullptr, 10) : 0;
  const std::vector<std::string> texts = count > 0 ? filesIn(argv[1]) : std::vector<std::string>();
  if (texts.empty()) {
    std::fputs("usage: NAME_fuzz_run FOLDER COUNT\n", stderr);
    return 2;
  }
  std::signal(SIGABRT, tellInput);
  for (const std::string& text : texts) call(text);
  constexpr std::uint32_t always = 1;
  Mutations mutations(texts, always);
  for (long i = 0; i < count; ++i) call(mutations.next());
  return 0;
}
