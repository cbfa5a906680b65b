// What windows can say of themselves that is not so.
#pragma once

#include <string>
#include <vector>

namespace tilora::chaos {

/// A value that no honest application gives one of these properties.
struct Lie {
  std::string name;
  std::vector<std::string> properties;
  std::string type;
  /// The bits of each of its items: 8 or 32.
  int format = 8;
  std::string bytes;
};

const std::vector<Lie>& lies();

}  // namespace tilora::chaos
