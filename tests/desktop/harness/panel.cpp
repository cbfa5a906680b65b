// The panels' configurations, and finding the program's windows without a window manager's help.
#include "harness/panel.h"

#include <cstdlib>
#include <stdexcept>
#include <vector>

namespace tilora::harness {
namespace {

constexpr const char* tint2Configuration = R"(panel_items = S
panel_size = 300 32
panel_position = top left horizontal
panel_background_id = 0
systray_padding = 4 4 4
systray_icon_size = 24
panel_monitor = )";

constexpr const char* xfceConfiguration = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="20"/>
      <property name="size" type="uint" value="32"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty"><property name="plugin-1" type="string" value="systray"/></property>
</channel>
)";

std::vector<xcb_window_t> childrenOf(Display& display, xcb_window_t window) {
  xcb_query_tree_reply_t* reply = xcb_query_tree_reply(display.xcb(), xcb_query_tree(display.xcb(), window), nullptr);
  if (reply == nullptr) return {};
  const xcb_window_t* first = xcb_query_tree_children(reply);
  std::vector<xcb_window_t> children(first, first + xcb_query_tree_children_length(reply));
  std::free(reply);
  return children;
}

std::optional<PixelRect> iconBelow(Display& display, xcb_window_t window, int depth) {
  for (const xcb_window_t child : childrenOf(display, window)) {
    // Windows that a window manager knows of could be embedded as well, as far as Qt is concerned.
    const bool isIcon = display.text(child, "WM_CLASS").starts_with("tilora") && display.hasProperty(child, "_XEMBED_INFO") &&
                        !display.hasProperty(child, "WM_STATE");
    if (isIcon && display.viewable(child)) return display.clientArea(child);
    if (depth == 0) continue;
    if (const auto found = iconBelow(display, child, depth - 1)) return found;
  }
  return std::nullopt;
}

}  // namespace

ManagedProcess startPanel(Panel kind, Session& session, int monitor) {
  switch (kind) {
    case Panel::tint2:
      return session.start({"tint2", "-c", session.home().write("tint2rc", tint2Configuration + std::to_string(monitor) + "\n").string()});
    case Panel::trayer:
      return session.start({"trayer", "--edge", "top", "--align", "left", "--widthtype", "pixel", "--width", "300", "--heighttype", "pixel",
                            "--height", "32", "--SetPartialStrut", "true"});
    case Panel::xfce:
      session.startBus();
      session.home().write("config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", xfceConfiguration);
      return session.start({"xfce4-panel"});
  }
  throw std::logic_error("no such panel");
}

std::optional<PixelRect> embeddedIcon(Display& display) {
  constexpr int deepest = 5;
  return iconBelow(display, display.root(), deepest);
}

std::optional<PixelRect> openMenuArea(Display& display) {
  for (const xcb_window_t child : childrenOf(display, display.root())) {
    if (display.text(child, "_NET_WM_NAME") == "Tilora" && display.viewable(child)) return display.clientArea(child);
  }
  return std::nullopt;
}

}  // namespace tilora::harness
