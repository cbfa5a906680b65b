// Reading the keyboard's map through the X keyboard extension.
#include "platform/x11/keymap.h"

#include <algorithm>
#include <bit>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/x11/reply.h"
#include "platform/x11/xkb_protocol.h"

namespace tilora::x11 {

namespace {

struct KeyPosition {
  std::uint8_t keyCode;
  std::string_view name;
};

/// The codes are those of Carbon's Events.h (kVK_*). On an ISO keyboard macOS swaps 10 and 50; here 50 is the key before "1" and 10 the one
/// beside the left Shift on every keyboard, as the printed names say. The Fn key and 52 have no position on a PC keyboard.
constexpr auto keyPositions = std::to_array<KeyPosition>({
    {0, "AC01"},   {1, "AC02"},   {2, "AC03"},   {3, "AC04"},   {4, "AC06"},   {5, "AC05"},   {6, "AB01"},   {7, "AB02"},   {8, "AB03"},
    {9, "AB04"},   {10, "LSGT"},  {11, "AB05"},  {12, "AD01"},  {13, "AD02"},  {14, "AD03"},  {15, "AD04"},  {16, "AD06"},  {17, "AD05"},
    {18, "AE01"},  {19, "AE02"},  {20, "AE03"},  {21, "AE04"},  {22, "AE06"},  {23, "AE05"},  {24, "AE12"},  {25, "AE09"},  {26, "AE07"},
    {27, "AE11"},  {28, "AE08"},  {29, "AE10"},  {30, "AD12"},  {31, "AD09"},  {32, "AD07"},  {33, "AD11"},  {34, "AD08"},  {35, "AD10"},
    {36, "RTRN"},  {37, "AC09"},  {38, "AC07"},  {39, "AC11"},  {40, "AC08"},  {41, "AC10"},  {42, "BKSL"},  {43, "AB08"},  {44, "AB10"},
    {45, "AB06"},  {46, "AB07"},  {47, "AB09"},  {48, "TAB"},   {49, "SPCE"},  {50, "TLDE"},  {51, "BKSP"},  {53, "ESC"},   {54, "RWIN"},
    {55, "LWIN"},  {56, "LFSH"},  {57, "CAPS"},  {58, "LALT"},  {59, "LCTL"},  {60, "RTSH"},  {61, "RALT"},  {62, "RCTL"},  {64, "FK17"},
    {65, "KPDL"},  {67, "KPMU"},  {69, "KPAD"},  {71, "NMLK"},  {72, "VOL+"},  {73, "VOL-"},  {74, "MUTE"},  {75, "KPDV"},  {76, "KPEN"},
    {78, "KPSU"},  {79, "FK18"},  {80, "FK19"},  {81, "KPEQ"},  {82, "KP0"},   {83, "KP1"},   {84, "KP2"},   {85, "KP3"},   {86, "KP4"},
    {87, "KP5"},   {88, "KP6"},   {89, "KP7"},   {90, "FK20"},  {91, "KP8"},   {92, "KP9"},   {93, "AE13"},  {94, "AB11"},  {95, "JPCM"},
    {96, "FK05"},  {97, "FK06"},  {98, "FK07"},  {99, "FK03"},  {100, "FK08"}, {101, "FK09"}, {102, "MUHE"}, {103, "FK11"}, {104, "HENK"},
    {105, "FK13"}, {106, "FK16"}, {107, "FK14"}, {109, "FK10"}, {110, "COMP"}, {111, "FK12"}, {113, "FK15"}, {114, "INS"},  {115, "HOME"},
    {116, "PGUP"}, {117, "DELE"}, {118, "FK04"}, {119, "END"},  {120, "FK02"}, {121, "PGDN"}, {122, "FK01"}, {123, "LEFT"}, {124, "RGHT"},
    {125, "DOWN"}, {126, "UP"},
});

constexpr std::uint32_t leftCommand = 55;
constexpr std::uint32_t leftOption = 58;

constexpr std::uint32_t commandKey = 0x100;
constexpr std::uint32_t shiftKey = 0x200;
constexpr std::uint32_t optionKey = 0x800;
constexpr std::uint32_t controlKey = 0x1000;

constexpr std::uint64_t capsLockFlag = 1U << 16U;
constexpr std::uint64_t shiftFlag = 1U << 17U;
constexpr std::uint64_t controlFlag = 1U << 18U;
constexpr std::uint64_t optionFlag = 1U << 19U;
constexpr std::uint64_t commandFlag = 1U << 20U;

constexpr std::uint32_t wantedNames =
    XCB_XKB_NAME_DETAIL_VIRTUAL_MOD_NAMES | XCB_XKB_NAME_DETAIL_KEY_NAMES | XCB_XKB_NAME_DETAIL_KEY_ALIASES;

using KeycodesByName = std::unordered_map<std::string, xcb_keycode_t>;

/// The text of a fixed field of four characters, which is padded with zero bytes.
std::string trimmed(std::span<const char, 4> field) { return {field.begin(), std::ranges::find(field, '\0')}; }

/// The lists of a names reply, or nothing when the reply is shorter than it says. Only the lists asked for are there.
std::optional<xcb_xkb_get_names_value_list_t> lists(const xcb_xkb_get_names_reply_t& reply) {
  const std::size_t announced = std::size_t{4} * static_cast<unsigned>(std::popcount(reply.virtualMods)) +
                                sizeof(xcb_xkb_key_name_t) * reply.nKeys + sizeof(xcb_xkb_key_alias_t) * reply.nKeyAliases;
  if ((reply.which & ~wantedNames) != 0 || announced > std::size_t{4} * reply.length) return std::nullopt;
  xcb_xkb_get_names_value_list_t list{};
  xcb_xkb_get_names_value_list_unpack(xcb_xkb_get_names_value_list(&reply), reply.nTypes, reply.indicators, reply.virtualMods,
                                      reply.groupNames, reply.nKeys, reply.nKeyAliases, reply.nRadioGroups, reply.which, &list);
  return list;
}

KeycodesByName keycodesByName(const xcb_xkb_get_names_reply_t& reply, const xcb_xkb_get_names_value_list_t& list) {
  KeycodesByName keycodes;
  if ((reply.which & XCB_XKB_NAME_DETAIL_KEY_NAMES) == 0) return keycodes;
  for (unsigned i = 0; i < reply.nKeys && reply.firstKey + i <= 255U; ++i) {
    keycodes.emplace(trimmed(list.keyNames[i].name), static_cast<xcb_keycode_t>(reply.firstKey + i));
  }
  if ((reply.which & XCB_XKB_NAME_DETAIL_KEY_ALIASES) == 0) return keycodes;
  for (unsigned i = 0; i < reply.nKeyAliases; ++i) {
    if (const auto real = keycodes.find(trimmed(list.keyAliases[i].real)); real != keycodes.end()) {
      const xcb_keycode_t keycode = real->second;
      keycodes.emplace(trimmed(list.keyAliases[i].alias), keycode);
    }
  }
  return keycodes;
}

/// The real modifiers of each virtual modifier; 0 where it has none.
std::array<std::uint8_t, 16> virtualModifiers(const xcb_xkb_get_map_reply_t& reply) {
  std::array<std::uint8_t, 16> real{};
  const bool present = (reply.present & XCB_XKB_MAP_PART_VIRTUAL_MODS) != 0;
  // 40 bytes of fixed part are 8 more than the 32 that a reply's length does not count.
  const std::size_t available = std::size_t{4} * reply.length;
  const auto count = static_cast<std::size_t>(std::popcount(reply.virtualMods));
  if (!present || reply.present != XCB_XKB_MAP_PART_VIRTUAL_MODS || available < sizeof(reply) - 32 + count) return real;
  const auto* bytes = static_cast<const std::uint8_t*>(xcb_xkb_get_map_map(&reply));
  for (unsigned bit = 0, i = 0; bit < real.size(); ++bit) {
    if ((reply.virtualMods >> bit & 1U) != 0) real[bit] = bytes[i++];
  }
  return real;
}

using ModifiersByName = std::vector<std::pair<xcb_atom_t, std::uint8_t>>;

/// The real modifiers of each virtual modifier that has a name.
ModifiersByName modifiersByName(const xcb_xkb_get_names_reply_t& reply, const xcb_xkb_get_names_value_list_t& list,
                                const xcb_xkb_get_map_reply_t& map) {
  ModifiersByName modifiers;
  if ((reply.which & XCB_XKB_NAME_DETAIL_VIRTUAL_MOD_NAMES) == 0) return modifiers;
  const auto real = virtualModifiers(map);
  for (unsigned bit = 0, i = 0; bit < real.size(); ++bit) {
    if ((reply.virtualMods >> bit & 1U) != 0) modifiers.emplace_back(list.virtualModNames[i++], real[bit]);
  }
  return modifiers;
}

/// One of Mod1 to Mod5 that a virtual modifier stands for: with several, a combination is made with the first. 0: none.
std::uint16_t modifierNamed(const ModifiersByName& modifiers, xcb_atom_t name) {
  constexpr unsigned ordinary = XCB_MOD_MASK_1 | XCB_MOD_MASK_2 | XCB_MOD_MASK_3 | XCB_MOD_MASK_4 | XCB_MOD_MASK_5;
  for (const auto& [known, real] : modifiers) {
    const unsigned candidates = real & ordinary;
    if (known == name) return static_cast<std::uint16_t>(candidates & (~candidates + 1U));
  }
  return 0;
}

/// The real modifier that the core modifier map gives to a key, apart from Shift, Lock and Control.
std::uint16_t modifierOfKey(const xcb_get_modifier_mapping_reply_t* map, std::optional<xcb_keycode_t> keycode) {
  if (map == nullptr || !keycode) return 0;
  const xcb_keycode_t* keycodes = xcb_get_modifier_mapping_keycodes(map);
  const unsigned perModifier = map->keycodes_per_modifier;
  for (unsigned modifier = XCB_MAP_INDEX_1; modifier <= XCB_MAP_INDEX_5; ++modifier) {
    const auto* first = keycodes + std::size_t{modifier} * perModifier;
    if (std::find(first, first + perModifier, *keycode) != first + perModifier) return static_cast<std::uint16_t>(1U << modifier);
  }
  return 0;
}

}  // namespace

std::string_view keyNameForKeyCode(std::uint32_t keyCode) {
  const auto* position = std::ranges::lower_bound(keyPositions, keyCode, {}, &KeyPosition::keyCode);
  return position != keyPositions.end() && position->keyCode == keyCode ? position->name : std::string_view{};
}

bool isModifierKey(std::uint32_t keyCode) {
  constexpr std::uint32_t first = 54;  // right Command
  constexpr std::uint32_t last = 63;   // Function
  return first <= keyCode && keyCode <= last;
}

Keymap Keymap::read(const Connection& connection, std::uint32_t* sequence) {
  Keymap keymap;
  if (connection.extensions().xkbOpcode == 0) return keymap;
  xcb_connection_t* xcb = connection.xcb();
  const auto namesCookie = xcb_xkb_get_names(xcb, XCB_XKB_ID_USE_CORE_KBD, wantedNames);
  const auto mapCookie =
      xcb_xkb_get_map(xcb, XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_MAP_PART_VIRTUAL_MODS, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
  const auto modifierCookie = xcb_get_modifier_mapping(xcb);
  if (sequence != nullptr) *sequence = namesCookie.sequence;

  const Reply<xcb_xkb_get_names_reply_t> namesReply{xcb_xkb_get_names_reply(xcb, namesCookie, nullptr)};
  const Reply<xcb_xkb_get_map_reply_t> mapReply{xcb_xkb_get_map_reply(xcb, mapCookie, nullptr)};
  const Reply<xcb_get_modifier_mapping_reply_t> modifierReply{xcb_get_modifier_mapping_reply(xcb, modifierCookie, nullptr)};
  if (!namesReply || !mapReply) return keymap;
  const auto list = lists(*namesReply);
  if (!list) return keymap;

  const KeycodesByName keycodes = keycodesByName(*namesReply, *list);
  for (const auto& [keyCode, name] : keyPositions) {
    if (const auto found = keycodes.find(std::string(name)); found != keycodes.end()) keymap.keycodes_[keyCode] = found->second;
  }
  const auto modifiers = modifiersByName(*namesReply, *list, *mapReply);
  const Atoms& atoms = connection.atoms();
  keymap.alt_ = modifierNamed(modifiers, atoms.Alt);
  keymap.super_ = modifierNamed(modifiers, atoms.Super);
  keymap.numLock_ = modifierNamed(modifiers, atoms.NumLock);
  keymap.scrollLock_ = modifierNamed(modifiers, atoms.ScrollLock);
  // A map without these virtual modifiers still says what the keys do.
  if (keymap.alt_ == 0) keymap.alt_ = modifierOfKey(modifierReply.get(), keymap.keycode(leftOption));
  if (keymap.super_ == 0) keymap.super_ = modifierOfKey(modifierReply.get(), keymap.keycode(leftCommand));
  return keymap;
}

std::optional<xcb_keycode_t> Keymap::keycode(std::uint32_t keyCode) const {
  if (keyCode >= keycodes_.size() || keycodes_[keyCode] == 0) return std::nullopt;
  return keycodes_[keyCode];
}

std::optional<std::uint32_t> Keymap::keyCode(xcb_keycode_t keycode) const {
  const auto* found = std::ranges::find(keycodes_, keycode);
  if (keycode == 0 || found == keycodes_.end()) return std::nullopt;
  return static_cast<std::uint32_t>(found - keycodes_.begin());
}

std::optional<std::uint16_t> Keymap::modifiers(std::uint32_t mask) const {
  if ((mask & ~(commandKey | shiftKey | optionKey | controlKey)) != 0) return std::nullopt;
  if (((mask & optionKey) != 0 && alt_ == 0) || ((mask & commandKey) != 0 && super_ == 0)) return std::nullopt;
  unsigned real = 0;
  if ((mask & shiftKey) != 0) real |= XCB_MOD_MASK_SHIFT;
  if ((mask & controlKey) != 0) real |= XCB_MOD_MASK_CONTROL;
  if ((mask & optionKey) != 0) real |= alt_;
  if ((mask & commandKey) != 0) real |= super_;
  return static_cast<std::uint16_t>(real);
}

std::vector<std::uint16_t> Keymap::lockStates() const {
  std::vector<std::uint16_t> states{0};
  for (const unsigned lock : {unsigned{XCB_MOD_MASK_LOCK}, unsigned{numLock_}, unsigned{scrollLock_}}) {
    const bool known = std::ranges::any_of(states, [&](std::uint16_t state) { return (state & lock) != 0; });
    if (lock == 0 || known || (lock & combinationModifiers()) != 0) continue;
    const std::size_t count = states.size();
    for (std::size_t i = 0; i < count; ++i) states.push_back(static_cast<std::uint16_t>(states[i] | lock));
  }
  return states;
}

std::optional<KeyEvent> Keymap::keyEvent(xcb_keycode_t keycode, std::uint16_t state) const {
  const auto code = keyCode(keycode);
  if (!code) return std::nullopt;
  KeyEvent event{.keyCode = *code};
  if ((state & XCB_MOD_MASK_LOCK) != 0) event.flags |= capsLockFlag;
  if ((state & XCB_MOD_MASK_SHIFT) != 0) event.flags |= shiftFlag;
  if ((state & XCB_MOD_MASK_CONTROL) != 0) event.flags |= controlFlag;
  if ((state & alt_) != 0) event.flags |= optionFlag;
  if ((state & super_) != 0) event.flags |= commandFlag;
  return event;
}

}  // namespace tilora::x11
