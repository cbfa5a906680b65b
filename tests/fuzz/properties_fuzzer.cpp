// What holds of any window properties that clients and window managers may set, in the form that libFuzzer calls.
//
// An input is a text: for each property a line "NAME TYPE FORMAT", then its value, then a line "--". Names and types are those of atoms.
// The value of one of format 8 are the bytes as they stand, one of format 32 is made of numbers and names of atoms.
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "checks.h"
#include "platform/x11/client_fields.h"
#include "platform/x11/xsettings.h"

namespace {

using namespace tilora::x11;
using tilora::fuzz::isUtf8;
using tilora::fuzz::require;

constexpr xcb_atom_t firstAtom = 1000;
constexpr int largestExtent = 2048;
constexpr int largestSize = 32767;

/// An atom of its own for each name, without a server.
Atoms numberedAtoms() {
  Atoms atoms;
  xcb_atom_t next = firstAtom;
#define TILORA_X11_NUMBER(name) atoms.name = next++;
  TILORA_X11_ATOMS(TILORA_X11_NUMBER)
#undef TILORA_X11_NUMBER
  return atoms;
}

const Atoms atoms = numberedAtoms();

/// The atom of a name; the number that a text begins with when it is no name.
std::uint32_t itemNamed(const std::string& name) {
  static const std::vector<std::pair<std::string_view, xcb_atom_t>> named = {{"ATOM", XCB_ATOM_ATOM},
                                                                             {"CARDINAL", XCB_ATOM_CARDINAL},
                                                                             {"STRING", XCB_ATOM_STRING},
                                                                             {"WINDOW", XCB_ATOM_WINDOW},
                                                                             {"WM_CLASS", XCB_ATOM_WM_CLASS},
                                                                             {"WM_NAME", XCB_ATOM_WM_NAME},
                                                                             {"WM_NORMAL_HINTS", XCB_ATOM_WM_NORMAL_HINTS},
                                                                             {"WM_SIZE_HINTS", XCB_ATOM_WM_SIZE_HINTS},
                                                                             {"WM_TRANSIENT_FOR", XCB_ATOM_WM_TRANSIENT_FOR},
#define TILORA_X11_NAMED(name) {#name, atoms.name},
                                                                             TILORA_X11_ATOMS(TILORA_X11_NAMED)
#undef TILORA_X11_NAMED
  };
  const auto found = std::find_if(named.begin(), named.end(), [&](const auto& entry) { return entry.first == name; });
  return found == named.end() ? static_cast<std::uint32_t>(std::strtoul(name.c_str(), nullptr, 0)) : found->second;
}

struct Given {
  xcb_atom_t name = XCB_ATOM_NONE;
  xcb_atom_t type = XCB_ATOM_NONE;
  std::uint8_t format = 0;
  std::string bytes;
};

std::string items(const std::string& text) {
  std::string bytes;
  std::istringstream in(text);
  for (std::string word; in >> word;) {
    const std::uint32_t item = itemNamed(word);
    bytes.append(reinterpret_cast<const char*>(&item), sizeof(item));
  }
  return bytes;
}

/// Nothing but a name when the first line is not as it should be.
Given given(const std::string& text) {
  const auto endOfLine = std::min(text.find('\n'), text.size());
  std::istringstream line(text.substr(0, endOfLine));
  std::string name;
  std::string type;
  int format = 0;
  line >> name >> type >> format;
  const std::string value = text.substr(std::min(endOfLine + 1, text.size()));
  if (format == 32) return {itemNamed(name), itemNamed(type), 32, items(value)};
  return {itemNamed(name), itemNamed(type), static_cast<std::uint8_t>(format == 16 ? 16 : 8), value};
}

/// The reply of a server that has it so, in memory of just its length. At most `longest` 32-bit units are read.
Property served(const Given& property, std::uint32_t longest) {
  const std::size_t unit = property.format / 8U;
  const std::size_t count = std::min<std::size_t>(property.bytes.size(), std::size_t{4} * longest) / unit;
  auto* reply = static_cast<xcb_get_property_reply_t*>(std::calloc(1, sizeof(xcb_get_property_reply_t) + count * unit));
  reply->response_type = 1;
  reply->format = property.format;
  reply->type = property.type;
  reply->value_len = static_cast<std::uint32_t>(count);
  std::memcpy(reply + 1, property.bytes.data(), count * unit);
  return Property{Reply<xcb_get_property_reply_t>{reply}};
}

void requireText(const std::string& text) { require(isUtf8(text) && text.find('\0') == std::string::npos); }

void requireExtents(const Extents& extents) {
  for (const int extent : {extents.left, extents.right, extents.top, extents.bottom}) require(extent >= 0 && extent <= largestExtent);
}

void requireStrut(const std::optional<Strut>& strut) {
  if (!strut) return;
  require(strut->left + strut->right + strut->top + strut->bottom > 0);
  for (const int edge : {strut->left, strut->right, strut->top, strut->bottom, strut->leftStart, strut->leftEnd, strut->rightStart,
                         strut->rightEnd, strut->topStart, strut->topEnd, strut->bottomStart, strut->bottomEnd}) {
    require(edge >= 0 && edge <= largestSize);
  }
}

/// What the rest of the program reckons with.
void requirePlausible(const ClientWindow& window) {
  for (const auto& text : {window.className, window.instanceName, window.machine, window.applicationId, window.role}) requireText(text);
  for (const auto& text : {window.name, window.legacyName}) {
    if (!text) continue;
    requireText(*text);
    require(!text->empty());
  }
  requireExtents(window.decoration);
  requireExtents(window.shadow);
  for (const int limit : {window.limits.minWidth, window.limits.minHeight, window.limits.maxWidth, window.limits.maxHeight,
                          window.limits.widthIncrement, window.limits.heightIncrement}) {
    require(limit >= 0 && limit <= largestSize);
  }
  requireStrut(window.strut);
  requireStrut(window.strutPartial);
  require(window.desktop != 0xFFFFFFFFU);
}

/// The fields that properties fill, but for the allowed actions, which are remembered.
bool isSame(const ClientWindow& one, const ClientWindow& other) {
  return one.className == other.className && one.instanceName == other.instanceName && one.machine == other.machine &&
         one.applicationId == other.applicationId && one.leader == other.leader && one.declaredProcess == other.declaredProcess &&
         one.type == other.type && one.transientFor == other.transientFor && one.states == other.states && one.desktop == other.desktop &&
         one.decoration == other.decoration && one.shadow == other.shadow && one.limits == other.limits && one.name == other.name &&
         one.legacyName == other.legacyName && one.role == other.role && one.storedMarks == other.storedMarks &&
         one.strutPartial == other.strutPartial && one.strut == other.strut;
}

/// Reads a field of `window` once, of `again` twice, which must make no difference.
void checkField(const PropertyField& field, const Given& property, ClientWindow& window, ClientWindow& again) {
  field.read(window, served(property, field.maximumLength), atoms);
  requirePlausible(window);
  for (int i = 0; i < 2; ++i) field.read(again, served(property, field.maximumLength), atoms);
  require(isSame(again, window));
  // Once the property is gone nothing of it stays.
  ClientWindow touched;
  field.read(touched, served(property, field.maximumLength), atoms);
  field.read(touched, Property(), atoms);
  require(isSame(touched, ClientWindow()));
}

void checkSettings(const std::string& bytes) {
  for (const std::string_view name : {"Net/ThemeName", ""}) {
    const auto text = xsettingsText(bytes, name);
    require(isUtf8(text));
    const bool isAscii = std::all_of(text.begin(), text.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
    require(!isAscii || bytes.find(text) != std::string::npos);
  }
}

std::vector<std::string> sections(const std::string& text) {
  constexpr std::string_view separator = "\n--\n";
  std::vector<std::string> found;
  std::size_t begin = 0;
  for (auto end = text.find(separator); end != std::string::npos; end = text.find(separator, begin)) {
    found.push_back(text.substr(begin, end - begin));
    begin = end + separator.size();
  }
  found.push_back(text.substr(begin));
  return found;
}

}  // namespace

// NOLINTNEXTLINE(readability-identifier-naming): the name is libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto fields = propertyFields(atoms);
  const std::string text(data, data + size);
  ClientWindow window;
  ClientWindow again;
  for (const auto& section : sections(text)) {
    const auto property = given(section);
    for (const auto& field : fields) {
      if (field.atom == property.name) checkField(field, property, window, again);
    }
    if (property.name == atoms._XSETTINGS_SETTINGS) checkSettings(property.bytes);
  }
  requireText(repairedUtf8(text.substr(0, std::min(text.find('\0'), text.size()))));
  return 0;
}
