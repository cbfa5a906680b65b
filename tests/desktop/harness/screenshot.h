// Pictures of the X screen.
#pragma once

#include <filesystem>

#include "harness/display.h"

namespace tilora::harness {

/// Writes what the root window shows in `area` to a PNG file. False when the server gives no picture or the file cannot be written.
bool saveScreenshot(Display& display, const PixelRect& area, const std::filesystem::path& file);

}  // namespace tilora::harness
