// The modifier keys in the two forms that the system has for them.
#include "platform/macos/modifier_flags.h"

#include <Carbon/Carbon.h>

#include <array>

namespace tilora::macos {
namespace {

struct Modifier {
  std::uint32_t carbon;
  std::uint64_t flag;
};

constexpr std::array modifiers = {
    Modifier{shiftKey, 1U << 17},
    Modifier{controlKey, 1U << 18},
    Modifier{optionKey, 1U << 19},
    Modifier{cmdKey, 1U << 20},
};

}  // namespace

std::uint64_t eventFlags(std::uint32_t carbonModifiers) {
  std::uint64_t flags = 0;
  for (const auto& modifier : modifiers) {
    if ((carbonModifiers & modifier.carbon) != 0) flags |= modifier.flag;
  }
  return flags;
}

}  // namespace tilora::macos
