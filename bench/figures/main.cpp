// tilora-figures DATA DOCUMENT PICTURES: makes the document of the data of tilora-comparison, and its plots with gnuplot in the folder
// PICTURES.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "figures/document.h"
#include "figures/plots.h"

namespace {

using namespace tilora::bench;
namespace fs = std::filesystem;

/// Whether gnuplot has drawn it.
bool draw(const Plot& plot, const fs::path& folder) {
  const fs::path script = folder / (plot.name + ".gnuplot");
  std::ofstream(script) << plot.script;
  const std::string command = "cd '" + folder.string() + "' && gnuplot '" + script.filename().string() + "'";
  const bool drawn = std::system(command.c_str()) == 0;
  fs::remove(script);
  return drawn;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: tilora-figures DATA DOCUMENT PICTURES\n";
    return 2;
  }
  const fs::path data = argv[1];
  const fs::path target = argv[2];
  const fs::path pictures = argv[3];
  std::ifstream file(data);
  const Record record = readRecord(file);
  if (record.entries.empty()) {
    std::cerr << "tilora-figures: there is nothing in " << data.string() << "\n";
    return 1;
  }
  fs::create_directories(pictures);
  for (const Plot& plot : plots(record)) {
    if (!draw(plot, pictures)) return 1;
  }
  const fs::path here = fs::absolute(target).parent_path();
  std::ofstream written(target);
  written << document(record, fs::absolute(pictures).lexically_relative(here).string(),
                      fs::absolute(data).lexically_relative(here).string());
  return written ? 0 : 1;
}
