// Reading RandR monitors and taking struts from them.
#include "platform/x11/monitors.h"

#include <xcb/randr.h>

#include <algorithm>

#include "platform/x11/reply.h"

namespace tilora::x11 {
namespace {

/// Whether the ranges [start, end] and [low, high) meet.
bool meets(int start, int end, int low, int high) { return start < high && end >= low; }

/// A panel that would leave less than this of a monitor is not believed.
constexpr int leastVisible = 64;

PixelRect believable(const PixelRect& visible, const PixelRect& otherwise) {
  return visible.width >= leastVisible && visible.height >= leastVisible ? visible : otherwise;
}

/// `free`, a part of the monitor `frame`, less what one strut takes.
PixelRect withoutStrut(const PixelRect& free, const PixelRect& frame, const Strut& strut, const PixelRect& root) {
  int left = free.x;
  int right = free.right();
  int top = free.y;
  int bottom = free.bottom();
  const int rightEdge = root.width - strut.right;
  const int bottomEdge = root.height - strut.bottom;
  if (strut.left > frame.x && strut.left <= frame.right() && meets(strut.leftStart, strut.leftEnd, frame.y, frame.bottom())) {
    left = std::max(left, strut.left);
  }
  if (strut.right > 0 && rightEdge >= frame.x && rightEdge < frame.right() &&
      meets(strut.rightStart, strut.rightEnd, frame.y, frame.bottom())) {
    right = std::min(right, rightEdge);
  }
  if (strut.top > frame.y && strut.top <= frame.bottom() && meets(strut.topStart, strut.topEnd, frame.x, frame.right())) {
    top = std::max(top, strut.top);
  }
  if (strut.bottom > 0 && bottomEdge >= frame.y && bottomEdge < frame.bottom() &&
      meets(strut.bottomStart, strut.bottomEnd, frame.x, frame.right())) {
    bottom = std::min(bottom, bottomEdge);
  }
  return {left, top, right - left, bottom - top};
}

Rect flipped(const PixelRect& rect, int bottom) {
  return {static_cast<double>(rect.x), static_cast<double>(bottom - rect.bottom()), static_cast<double>(rect.width),
          static_cast<double>(rect.height)};
}

bool operator==(const Screen& a, const Screen& b) { return a.frame == b.frame && a.visibleFrame == b.visibleFrame && a.number == b.number; }

}  // namespace

PixelRect withoutStruts(const Monitor& monitor, const std::vector<Strut>& struts, const PixelRect& root) {
  PixelRect free = monitor.frame;
  for (const auto& strut : struts) free = believable(withoutStrut(free, monitor.frame, strut, root), free);
  return free;
}

std::vector<Monitor> readMonitors(Connection& connection) {
  std::vector<Monitor> monitors;
  auto* xcb = connection.xcb();
  if (connection.extensions().randrOpcode != 0) {
    xcb_generic_error_t* error = nullptr;
    const Reply<xcb_randr_get_monitors_reply_t> reply{
        xcb_randr_get_monitors_reply(xcb, xcb_randr_get_monitors(xcb, connection.root(), 1), &error)};
    const Reply<xcb_generic_error_t> owned{error};
    if (reply) {
      for (auto it = xcb_randr_get_monitors_monitors_iterator(reply.get()); it.rem > 0; xcb_randr_monitor_info_next(&it)) {
        Monitor monitor{{it.data->x, it.data->y, it.data->width, it.data->height}, it.data->primary != 0, std::nullopt};
        if (xcb_randr_monitor_info_outputs_length(it.data) > 0) monitor.output = *xcb_randr_monitor_info_outputs(it.data);
        if (!monitor.frame.isEmpty()) monitors.push_back(monitor);
      }
    }
  }
  if (monitors.empty()) monitors.push_back({readRootFrame(connection), true, std::nullopt});
  std::stable_partition(monitors.begin(), monitors.end(), [](const Monitor& monitor) { return monitor.primary; });
  return monitors;
}

PixelRect readRootFrame(Connection& connection) {
  xcb_generic_error_t* error = nullptr;
  const Reply<xcb_get_geometry_reply_t> reply{
      xcb_get_geometry_reply(connection.xcb(), xcb_get_geometry(connection.xcb(), connection.root()), &error)};
  const Reply<xcb_generic_error_t> owned{error};
  if (!reply) return {0, 0, connection.screen().width_in_pixels, connection.screen().height_in_pixels};
  return {0, 0, reply->width, reply->height};
}

bool ScreenLayout::update(const std::vector<Monitor>& monitors, const std::vector<Strut>& struts, const PixelRect& root,
                          const std::optional<PixelRect>& workArea) {
  std::vector<PixelRect> visible;
  int bottom = 0;
  int top = monitors.empty() ? 0 : monitors.front().frame.y;
  for (const auto& monitor : monitors) {
    PixelRect free = withoutStruts(monitor, struts, root);
    // A window manager's own panel sets no strut; with one monitor the work area tells of it.
    if (monitors.size() == 1 && workArea) free = believable(intersection(free, *workArea), free);
    visible.push_back(free);
    bottom = std::max(bottom, monitor.frame.bottom());
    top = std::min(top, monitor.frame.y);
  }
  std::vector<ScreenRef> screens;
  bool changed = monitors.size() != screens_.size() || top != top_;
  for (std::size_t i = 0; i < monitors.size(); ++i) {
    Screen screen{flipped(monitors[i].frame, bottom), flipped(visible[i], bottom), {}};
    if (monitors[i].output) screen.number = *monitors[i].output;
    const bool same = i < screens_.size() && *screens_[i] == screen;
    changed |= !same;
    screens.push_back(same ? screens_[i] : std::make_shared<const Screen>(screen));
  }
  monitors_ = monitors;
  visible_ = std::move(visible);
  screens_ = std::move(screens);
  top_ = top;
  return changed;
}

std::optional<std::size_t> ScreenLayout::monitorAt(int x, int y) const {
  for (std::size_t i = 0; i < monitors_.size(); ++i) {
    if (monitors_[i].frame.contains(x, y)) return i;
  }
  return std::nullopt;
}

}  // namespace tilora::x11
