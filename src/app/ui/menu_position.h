// Where the menu opens.
#pragma once

#include <QRect>

namespace tilora::app {

/// The top-left corner of a menu of `size` that belongs to an icon at `anchor`: under it, or above it where there is more room, beginning
/// at its left edge, and inside `visible` as far as it fits. All in one coordinate system with its origin at the top-left.
QPoint menuPosition(QSize size, const QRect& anchor, const QRect& visible);

}  // namespace tilora::app
