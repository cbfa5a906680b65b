// The lies, each with the bytes that tell it.
#include "lies.h"

#include <cstddef>
#include <cstdint>

namespace tilora::chaos {
namespace {

constexpr std::size_t megabyte = std::size_t{1} << 20U;
/// WM_NORMAL_HINTS: its numbers, and in the first of them everything that ICCCM 4.1.2.3 lets a program claim.
constexpr std::size_t sizeHintNumbers = 18;
constexpr std::uint32_t everyHint = 0x3fc;

std::string bytesOf(const std::vector<std::uint32_t>& numbers) {
  return {reinterpret_cast<const char*>(numbers.data()), numbers.size() * sizeof(std::uint32_t)};
}

std::string sizeHints(std::uint32_t each) {
  std::vector<std::uint32_t> numbers(sizeHintNumbers, each);
  numbers.front() = everyHint;
  return bytesOf(numbers);
}

std::vector<Lie> allLies() {
  const std::vector<std::string> titles = {"_NET_WM_NAME", "WM_NAME"};
  const std::vector<std::string> texts = {"WM_CLASS", "WM_WINDOW_ROLE", "WM_CLIENT_MACHINE"};
  const std::vector<std::string> numbers = {"WM_NORMAL_HINTS", "_NET_WM_PID", "_NET_WM_WINDOW_TYPE", "WM_TRANSIENT_FOR",
                                            "WM_CLIENT_LEADER"};
  const std::string broken = "\xff\xfe\xc3(\xed\xa0\x80\xf8\x88";
  const std::string cut("a\0b\0c", 5);
  return {
      {"title of a megabyte", titles, "UTF8_STRING", 8, std::string(megabyte, 'x')},
      {"title not UTF-8", titles, "UTF8_STRING", 8, broken},
      {"title with NUL", titles, "UTF8_STRING", 8, cut},
      {"other text of a megabyte", texts, "STRING", 8, std::string(megabyte, 'x')},
      {"other text not UTF-8", texts, "UTF8_STRING", 8, broken},
      {"other text with NUL", texts, "STRING", 8, cut},
      {"size hints of zero", {"WM_NORMAL_HINTS"}, "WM_SIZE_HINTS", 32, sizeHints(0)},
      {"size hints negative", {"WM_NORMAL_HINTS"}, "WM_SIZE_HINTS", 32, sizeHints(0xffffffffU)},
      {"size hints enormous", {"WM_NORMAL_HINTS"}, "WM_SIZE_HINTS", 32, sizeHints(0x7fffffffU)},
      {"size hints cut short", {"WM_NORMAL_HINTS"}, "WM_SIZE_HINTS", 32, bytesOf({everyHint})},
      {"numbers of a wrong type", numbers, "CARDINAL", 32, bytesOf(std::vector<std::uint32_t>(sizeHintNumbers, 0xffffffffU))},
      {"too many numbers", numbers, "CARDINAL", 32, bytesOf(std::vector<std::uint32_t>(3000, 0x7fff))},
  };
}

}  // namespace

const std::vector<Lie>& lies() {
  static const std::vector<Lie> all = allLies();
  return all;
}

}  // namespace tilora::chaos
