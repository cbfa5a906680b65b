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

/// Whether gnuplot has drawn it, in the current folder.
bool draw(const Plot& plot) {
  const std::string script = plot.name + ".gnuplot";
  std::ofstream(script) << plot.script;
  const bool drawn = std::system(("gnuplot " + script).c_str()) == 0;
  fs::remove(script);
  return drawn;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: tilora-figures DATA DOCUMENT PICTURES\n";
    return 2;
  }
  const fs::path data = fs::absolute(argv[1]);
  const fs::path target = fs::absolute(argv[2]);
  const fs::path pictures = fs::absolute(argv[3]);
  std::ifstream file(data);
  const Record record = readRecord(file);
  if (record.entries.empty()) {
    std::cerr << "tilora-figures: there is nothing in " << data.string() << "\n";
    return 1;
  }
  fs::create_directories(pictures);
  fs::current_path(pictures);
  for (const Plot& plot : plots(record)) {
    if (!draw(plot)) return 1;
  }
  const fs::path here = target.parent_path();
  std::ofstream written(target);
  written << document(record, pictures.lexically_relative(here).string(), data.lexically_relative(here).string());
  return written ? 0 : 1;
}
