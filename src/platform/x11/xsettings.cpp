// Reading the manager's property, within its bounds.
#include "platform/x11/xsettings.h"

#include <cstdint>
#include <optional>
#include <utility>

#include "platform/x11/event_type.h"
#include "platform/x11/property.h"
#include "platform/x11/reply.h"

namespace tilora::x11 {
namespace {

/// In units of 32 bits.
constexpr std::uint32_t longestProperty = 16384;

/// Takes the numbers and texts of a settings property, in the manager's byte order, from the front to the back.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : rest_(bytes) {}

  bool failed() const { return failed_; }
  void setMostSignificantFirst(bool first) { mostSignificantFirst_ = first; }

  std::string_view take(std::size_t count) {
    if (count > rest_.size()) {
      failed_ = true;
      return {};
    }
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(count);
    return taken;
  }
  /// Takes a text, and what fills it up to a multiple of four bytes.
  std::string_view takeText(std::size_t length) {
    const std::string_view text = take(length);
    take((4 - length % 4) % 4);
    return text;
  }
  std::uint32_t takeNumber(std::size_t size) {
    std::uint32_t number = 0;
    const std::string_view bytes = take(size);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      const std::size_t place = mostSignificantFirst_ ? bytes.size() - 1 - i : i;
      number |= std::uint32_t{static_cast<std::uint8_t>(bytes[i])} << (8 * place);
    }
    return number;
  }

 private:
  std::string_view rest_;
  bool mostSignificantFirst_ = false;
  bool failed_ = false;
};

/// The value of the setting that begins here, when it is a text; it is taken in any case.
std::optional<std::string_view> takeSetting(Reader& reader, std::string_view& name) {
  constexpr std::uint32_t integer = 0;
  constexpr std::uint32_t text = 1;
  const std::uint32_t type = reader.takeNumber(1);
  reader.take(1);
  const std::uint32_t nameLength = reader.takeNumber(2);
  name = reader.takeText(nameLength);
  reader.takeNumber(4);
  if (type != text) {
    reader.take(type == integer ? 4 : 8);
    return std::nullopt;
  }
  const std::uint32_t length = reader.takeNumber(4);
  return reader.takeText(length);
}

}  // namespace

std::string xsettingsText(std::string_view bytes, std::string_view name) {
  Reader reader(bytes);
  reader.setMostSignificantFirst(reader.takeNumber(1) != 0);
  reader.take(3);
  reader.takeNumber(4);
  const std::uint32_t count = reader.takeNumber(4);
  for (std::uint32_t i = 0; i < count && !reader.failed(); ++i) {
    std::string_view found;
    const auto value = takeSetting(reader, found);
    if (value && found == name && !reader.failed()) return repairedUtf8(std::string(*value));
  }
  return {};
}

XSettings::XSettings(Connection& connection, std::function<void()> changed) : connection_(connection), changed_(std::move(changed)) {
  const std::string name = "_XSETTINGS_S" + std::to_string(connection_.screenNumber());
  const auto cookie = xcb_intern_atom(connection_.xcb(), 0, static_cast<std::uint16_t>(name.size()), name.c_str());
  const Reply<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(connection_.xcb(), cookie, nullptr)};
  if (!reply) return;
  selection_ = reply->atom;
  findManager();
}

bool XSettings::handleEvent(const xcb_generic_event_t& event) {
  const std::uint8_t type = typeOf(event);
  if (type == XCB_CLIENT_MESSAGE) {
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (message.type != connection_.atoms().MANAGER || message.format != 32 || message.data.data32[1] != selection_) return false;
    findManager();
    return true;
  }
  if (manager_ == XCB_WINDOW_NONE) return false;
  if (type == XCB_PROPERTY_NOTIFY && reinterpret_cast<const xcb_property_notify_event_t&>(event).window == manager_) {
    read();
    return true;
  }
  if (type == XCB_DESTROY_NOTIFY && reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == manager_) {
    findManager();
    return true;
  }
  return false;
}

void XSettings::findManager() {
  auto* xcb = connection_.xcb();
  const Reply<xcb_get_selection_owner_reply_t> owner{xcb_get_selection_owner_reply(xcb, xcb_get_selection_owner(xcb, selection_), nullptr)};
  manager_ = owner ? owner->owner : xcb_window_t{XCB_WINDOW_NONE};
  if (manager_ == XCB_WINDOW_NONE) return setThemeName({});
  const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(xcb, manager_, XCB_CW_EVENT_MASK, &mask);
  read();
}

void XSettings::read() {
  auto* xcb = connection_.xcb();
  const Atoms& atoms = connection_.atoms();
  const auto cookie = xcb_get_property(xcb, 0, manager_, atoms._XSETTINGS_SETTINGS, atoms._XSETTINGS_SETTINGS, 0, longestProperty);
  const Reply<xcb_get_property_reply_t> reply{xcb_get_property_reply(xcb, cookie, nullptr)};
  if (!reply || reply->format != 8) return setThemeName({});
  const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
  setThemeName(xsettingsText({static_cast<const char*>(xcb_get_property_value(reply.get())), length}, "Net/ThemeName"));
}

void XSettings::setThemeName(std::string name) {
  if (std::exchange(themeName_, std::move(name)) != themeName_) changed_();
}

}  // namespace tilora::x11
