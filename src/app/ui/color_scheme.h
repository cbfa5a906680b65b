// Light or dark, where Qt does not know what the desktop prefers.
#pragma once

#include <QPalette>

namespace tilora::app {

/// The colours of a desktop that prefers dark ones.
QPalette darkPalette();

}  // namespace tilora::app
