// Understanding the window properties of ICCCM and EWMH; what makes no sense counts as absent.
#include "platform/x11/client_fields.h"

#include <xcb/xcb_icccm.h>

#include <algorithm>
#include <cctype>

namespace tilora::x11 {
namespace {

/// No real window has wider borders or a larger limit than this.
constexpr std::uint32_t plausibleExtent = 2048;
constexpr int plausibleSize = 32767;

Extents extents(const Property& property) {
  const auto items = property.items(XCB_ATOM_CARDINAL);
  if (items.size() < 4 || std::any_of(items.begin(), items.begin() + 4, [](auto item) { return item > plausibleExtent; })) return {};
  return {static_cast<int>(items[0]), static_cast<int>(items[1]), static_cast<int>(items[2]), static_cast<int>(items[3])};
}

int limit(std::int32_t value) { return value > 0 && value <= plausibleSize ? value : 0; }

void readSizeHints(ClientWindow& window, const Property& property, const Atoms&) {
  window.limits = {};
  xcb_size_hints_t hints{};
  if (!property.isPresent()) return;
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): only read there, though it is declared otherwise.
  if (xcb_icccm_get_wm_size_hints_from_reply(&hints, const_cast<xcb_get_property_reply_t*>(property.reply())) == 0) return;
  if ((hints.flags & XCB_ICCCM_SIZE_HINT_P_MIN_SIZE) != 0) {
    window.limits.minWidth = limit(hints.min_width);
    window.limits.minHeight = limit(hints.min_height);
  }
  if ((hints.flags & XCB_ICCCM_SIZE_HINT_P_MAX_SIZE) != 0) {
    window.limits.maxWidth = limit(hints.max_width);
    window.limits.maxHeight = limit(hints.max_height);
  }
  if ((hints.flags & XCB_ICCCM_SIZE_HINT_P_RESIZE_INC) != 0) {
    window.limits.widthIncrement = limit(hints.width_inc);
    window.limits.heightIncrement = limit(hints.height_inc);
  }
}

void readClasses(ClientWindow& window, const Property& property, const Atoms& atoms) {
  const auto texts = property.texts(atoms);
  window.instanceName = texts.empty() ? std::string() : texts[0];
  window.className = texts.size() < 2 ? std::string() : texts[1];
}

void readType(ClientWindow& window, const Property& property, const Atoms& atoms) {
  window.type = WindowType::unset;
  for (const auto item : property.items(XCB_ATOM_ATOM)) {
    if (item == atoms._NET_WM_WINDOW_TYPE_NORMAL) {
      window.type = WindowType::normal;
    } else if (item == atoms._NET_WM_WINDOW_TYPE_DIALOG) {
      window.type = WindowType::dialog;
    } else if (item == atoms._NET_WM_WINDOW_TYPE_UTILITY || item == atoms._NET_WM_WINDOW_TYPE_TOOLBAR ||
               item == atoms._NET_WM_WINDOW_TYPE_MENU) {
      window.type = WindowType::palette;
    } else if (item == atoms._NET_WM_WINDOW_TYPE_DESKTOP) {
      window.type = WindowType::desktop;
    } else if (item == atoms._NET_WM_WINDOW_TYPE_DOCK) {
      window.type = WindowType::dock;
    } else if (item == atoms._NET_WM_WINDOW_TYPE_SPLASH || item == atoms._NET_WM_WINDOW_TYPE_NOTIFICATION ||
               item == atoms._NET_WM_WINDOW_TYPE_TOOLTIP || item == atoms._NET_WM_WINDOW_TYPE_POPUP_MENU ||
               item == atoms._NET_WM_WINDOW_TYPE_DROPDOWN_MENU || item == atoms._NET_WM_WINDOW_TYPE_COMBO ||
               item == atoms._NET_WM_WINDOW_TYPE_DND) {
      window.type = WindowType::other;
    } else {
      continue;  // a type unknown here: the next best one of the list counts
    }
    return;
  }
}

void readStates(ClientWindow& window, const Property& property, const Atoms& atoms) {
  window.states = {};
  for (const auto item : property.items(XCB_ATOM_ATOM)) {
    window.states.hidden |= item == atoms._NET_WM_STATE_HIDDEN;
    window.states.fullscreen |= item == atoms._NET_WM_STATE_FULLSCREEN;
    window.states.maximizedHorizontally |= item == atoms._NET_WM_STATE_MAXIMIZED_HORZ;
    window.states.maximizedVertically |= item == atoms._NET_WM_STATE_MAXIMIZED_VERT;
    window.states.skipTaskbar |= item == atoms._NET_WM_STATE_SKIP_TASKBAR;
  }
}

void readAllowedActions(ClientWindow& window, const Property& property, const Atoms& atoms) {
  const auto items = property.items(XCB_ATOM_ATOM);
  window.listsActions = property.isPresent();
  window.mayMove |= std::find(items.begin(), items.end(), atoms._NET_WM_ACTION_MOVE) != items.end();
  window.mayResize |= std::find(items.begin(), items.end(), atoms._NET_WM_ACTION_RESIZE) != items.end();
}

void readDesktop(ClientWindow& window, const Property& property, const Atoms&) {
  window.desktop = property.item(XCB_ATOM_CARDINAL);
  if (window.desktop == 0xFFFFFFFFU) window.desktop.reset();
}

void readMarks(ClientWindow& window, const Property& property, const Atoms&) {
  const auto mask = property.item(XCB_ATOM_CARDINAL).value_or(0);
  window.storedMarks = {(mask & 1U) != 0, (mask & 2U) != 0};
}

std::optional<Strut> strut(const std::vector<std::uint32_t>& items, std::size_t count) {
  if (items.size() < count || std::any_of(items.begin(), items.end(), [](auto item) { return item > 0x7FFFFFFFU; })) return std::nullopt;
  const auto at = [&](std::size_t i) { return std::min(static_cast<int>(items[i]), plausibleSize); };
  Strut result{at(0), at(1), at(2), at(3)};
  if (count == 12) {
    result.leftStart = at(4), result.leftEnd = at(5), result.rightStart = at(6), result.rightEnd = at(7);
    result.topStart = at(8), result.topEnd = at(9), result.bottomStart = at(10), result.bottomEnd = at(11);
  } else {
    result.leftEnd = result.rightEnd = result.topEnd = result.bottomEnd = plausibleSize;
  }
  if (result.left == 0 && result.right == 0 && result.top == 0 && result.bottom == 0) return std::nullopt;
  return result;
}

}  // namespace

std::array<PropertyField, propertyFieldCount> propertyFields(const Atoms& atoms) {
  return {{
      {Field::classes, XCB_ATOM_WM_CLASS, 256, readClasses},
      {Field::machine, atoms.WM_CLIENT_MACHINE, 64, [](auto& w, const auto& p, const auto& a) { w.machine = p.text(a).value_or(""); }},
      {Field::leader, atoms.WM_CLIENT_LEADER, 1,
       [](auto& w, const auto& p, const auto&) { w.leader = p.item(XCB_ATOM_WINDOW).value_or(0); }},
      {Field::applicationId, atoms._GTK_APPLICATION_ID, 256,
       [](auto& w, const auto& p, const auto& a) { w.applicationId = p.text(a).value_or(""); }},
      {Field::processId, atoms._NET_WM_PID, 1,
       [](auto& w, const auto& p, const auto&) { w.declaredProcess = p.item(XCB_ATOM_CARDINAL).value_or(0); }},
      {Field::type, atoms._NET_WM_WINDOW_TYPE, 32, readType},
      {Field::transientFor, XCB_ATOM_WM_TRANSIENT_FOR, 1,
       [](auto& w, const auto& p, const auto&) { w.transientFor = p.item(XCB_ATOM_WINDOW).value_or(0); }},
      {Field::states, atoms._NET_WM_STATE, 64, readStates},
      {Field::allowedActions, atoms._NET_WM_ALLOWED_ACTIONS, 64, readAllowedActions},
      {Field::desktop, atoms._NET_WM_DESKTOP, 1, readDesktop},
      {Field::decoration, atoms._NET_FRAME_EXTENTS, 4, [](auto& w, const auto& p, const auto&) { w.decoration = extents(p); }},
      {Field::shadow, atoms._GTK_FRAME_EXTENTS, 4, [](auto& w, const auto& p, const auto&) { w.shadow = extents(p); }},
      {Field::sizeHints, XCB_ATOM_WM_NORMAL_HINTS, 18, readSizeHints},
      {Field::name, atoms._NET_WM_NAME, 1024, [](auto& w, const auto& p, const auto& a) { w.name = p.text(a); }},
      {Field::legacyName, XCB_ATOM_WM_NAME, 1024, [](auto& w, const auto& p, const auto& a) { w.legacyName = p.text(a); }},
      {Field::role, atoms.WM_WINDOW_ROLE, 256, [](auto& w, const auto& p, const auto& a) { w.role = p.text(a).value_or(""); }},
      {Field::marks, atoms._TILORA_HIDDEN, 1, readMarks},
      {Field::strutPartial, atoms._NET_WM_STRUT_PARTIAL, 12,
       [](auto& w, const auto& p, const auto&) { w.strutPartial = strut(p.items(XCB_ATOM_CARDINAL), 12); }},
      {Field::strut, atoms._NET_WM_STRUT, 4, [](auto& w, const auto& p, const auto&) { w.strut = strut(p.items(XCB_ATOM_CARDINAL), 4); }},
  }};
}

}  // namespace tilora::x11
