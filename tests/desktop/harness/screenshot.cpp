// GetImage to PNG.
#include "harness/screenshot.h"

#include <QImage>
#include <QString>
#include <cstdlib>
#include <memory>

namespace tilora::harness {

bool saveScreenshot(Display& display, const PixelRect& area, const std::filesystem::path& file) {
  const auto cookie = xcb_get_image(display.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, display.root(), static_cast<std::int16_t>(area.x),
                                    static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
                                    static_cast<std::uint16_t>(area.height), ~0U);
  const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> reply(xcb_get_image_reply(display.xcb(), cookie, nullptr), &std::free);
  if (!reply || xcb_get_image_data_length(reply.get()) < area.width * area.height * 4) return false;
  const QImage image(xcb_get_image_data(reply.get()), area.width, area.height, qsizetype{4} * area.width, QImage::Format_RGB32);
  return image.save(QString::fromStdString(file.string()), "PNG");
}

}  // namespace tilora::harness
