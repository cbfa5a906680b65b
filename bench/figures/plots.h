// The plots: scripts for gnuplot.
#pragma once

#include <string>
#include <vector>

#include "figures/record.h"

namespace tilora::bench {

struct Plot {
  /// Of its file, without the folder.
  std::string name;
  /// What it shows, for those who do not see it.
  std::string caption;
  /// What gnuplot is told; it writes the file into its working directory.
  std::string script;
};

/// All plots that the record has data for.
std::vector<Plot> plots(const Record& record);

}  // namespace tilora::bench
