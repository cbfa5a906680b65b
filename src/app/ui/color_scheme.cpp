// The dark palette.
#include "app/ui/color_scheme.h"

namespace tilora::app {

QPalette darkPalette() {
  const QColor window(0x2A, 0x2A, 0x2D);
  const QColor base(0x1C, 0x1C, 0x1E);
  const QColor button(0x46, 0x46, 0x4A);
  const QColor text(0xF2, 0xF2, 0xF4);
  const QColor accent(0x3D, 0x8B, 0xE8);
  QPalette palette(text, button, button.lighter(), base.darker(), button.darker(), text, Qt::white, base, window);
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, QColor(0x6C, 0xB1, 0xFF));
  palette.setColor(QPalette::ToolTipBase, window);
  palette.setColor(QPalette::ToolTipText, text);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, QColor(0x8A, 0x8A, 0x8E));
  }
  return palette;
}

}  // namespace tilora::app
