// Calls a fuzz target with the same inputs every time: feeds, and feeds with a few bytes changed. Usage: feed_fuzz_run COUNT
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

// NOLINTNEXTLINE(readability-identifier-naming): the name is libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

const std::array seeds = {
    std::string(R"({"product":"Tilora","version":"1.3","file":"Tilora-1.3.zip"})"),
    std::string(R"({"file":"a b/../%zz?c#d","version":"1\u202e\ud83d\ude00\n","product":"é"})"),
    std::string(R"([{"product":null,"version":1e400,"file":[true,-0.5e-7]},"\\\/\b\f"])"),
    std::string("https://user:pass@[::1]:8080/a%20b/?c=d#e"),
};

/// Bytes that mean something to a reader of JSON, of addresses or of UTF-8.
constexpr std::string_view telling = "\"\\{}[]:,/?#@%.eE+-0u \n\x1b\x7f\x80\xbf\xc2\xe2\xf0\xff";

class Mutations {
 public:
  explicit Mutations(std::uint32_t seed) : random_(seed) {}

  std::string next() {
    std::string text = seeds.at(below(seeds.size()));
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

  std::mt19937 random_;
};

}  // namespace

int main(int argc, char** argv) {
  const long count = argc == 2 ? std::strtol(argv[1], nullptr, 10) : 0;
  if (count <= 0) {
    std::fputs("usage: feed_fuzz_run COUNT\n", stderr);
    return 2;
  }
  constexpr std::uint32_t always = 1;
  Mutations mutations(always);
  for (long i = 0; i < count; ++i) {
    const std::string input = mutations.next();
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
  }
  return 0;
}
