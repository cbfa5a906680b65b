// The property, the selection and the announcement.
#include "harness/settings_manager.h"

namespace tilora::harness {

SettingsValue& SettingsValue::text(std::string_view name, std::string_view value) {
  begin(Type::text, name);
  addNumber(settings_, value.size(), 4);
  addPadded(value);
  return *this;
}

SettingsValue& SettingsValue::integer(std::string_view name, std::uint32_t value) {
  begin(Type::integer, name);
  addNumber(settings_, value, 4);
  return *this;
}

SettingsValue& SettingsValue::color(std::string_view name) {
  constexpr std::size_t size = 8;
  begin(Type::color, name);
  settings_.append(size, '\x7F');
  return *this;
}

std::string SettingsValue::bytes() const {
  constexpr std::size_t serial = 7;
  std::string all(1, mostSignificantFirst_ ? '\1' : '\0');
  all.append(3, '\0');
  addNumber(all, serial, 4);
  addNumber(all, count_, 4);
  return all + settings_;
}

void SettingsValue::begin(Type type, std::string_view name) {
  ++count_;
  settings_ += static_cast<char>(type);
  settings_ += '\0';
  addNumber(settings_, name.size(), 2);
  addPadded(name);
  addNumber(settings_, 1, 4);
}

void SettingsValue::addNumber(std::string& to, std::size_t number, int size) const {
  for (int i = 0; i < size; ++i) to += static_cast<char>((number >> (8 * (mostSignificantFirst_ ? size - 1 - i : i))) & 0xFF);
}

void SettingsValue::addPadded(std::string_view text) {
  settings_ += text;
  settings_.append((4 - text.size() % 4) % 4, '\0');
}

SettingsManager::SettingsManager(Display& display, const std::string& value) : display_(display), window_(xcb_generate_id(display.xcb())) {
  xcb_create_window(display_.xcb(), XCB_COPY_FROM_PARENT, window_, display_.root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, 0, nullptr);
  set(value);
  const xcb_atom_t selection = display_.atom("_XSETTINGS_S0");
  xcb_set_selection_owner(display_.xcb(), window_, selection, XCB_CURRENT_TIME);
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = display_.root();
  message.type = display_.atom("MANAGER");
  message.data.data32[1] = selection;
  message.data.data32[2] = window_;
  xcb_send_event(display_.xcb(), 0, display_.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY, reinterpret_cast<const char*>(&message));
  display_.sync();
}

SettingsManager::~SettingsManager() {
  xcb_destroy_window(display_.xcb(), window_);
  display_.sync();
}

void SettingsManager::set(const std::string& value) {
  const xcb_atom_t property = display_.atom("_XSETTINGS_SETTINGS");
  xcb_change_property(display_.xcb(), XCB_PROP_MODE_REPLACE, window_, property, property, 8, static_cast<std::uint32_t>(value.size()),
                      value.data());
  display_.sync();
}

}  // namespace tilora::harness
