// Keeping the menu at its icon and on the screen.
#include "app/ui/menu_position.h"

#include <algorithm>

namespace tilora::app {
namespace {

/// What does not fit begins at the first edge.
int within(int wanted, int length, int from, int room) { return std::max(std::min(wanted, from + room - length), from); }

}  // namespace

QPoint menuPosition(QSize size, const QRect& anchor, const QRect& visible) {
  const bool above = anchor.center().y() > visible.center().y();
  const int y = above ? anchor.y() - size.height() : anchor.y() + anchor.height();
  return {within(anchor.x(), size.width(), visible.x(), visible.width()), within(y, size.height(), visible.y(), visible.height())};
}

}  // namespace tilora::app
