// The stored settings: their keys, and how each is read and written.
#pragma once

#include "platform/login_item.h"
#include "platform/settings_store.h"
#include "shortcuts/shortcut_binding.h"
#include "tiling/placement_memory.h"

namespace tilora {

/// Whether a status counts as on: the program is registered, whether or not the user still has to approve.
bool isOn(LoginItemStatus status);

/// The stored toggle; the login item's real state where none is stored.
bool loadStartOnLoginEnabled(SettingsStore& store, LoginItem& loginItem);
void saveStartOnLoginEnabled(SettingsStore& store, bool enabled);

/// The stored gap in points, at least 0; 12 where none is stored.
double loadWindowPadding(SettingsStore& store);
void saveWindowPadding(SettingsStore& store, double padding);

/// The stored combinations; the defaults where none are stored or they cannot be read.
ShortcutBindings loadShortcutBindings(SettingsStore& store);
void saveShortcutBindings(SettingsStore& store, const ShortcutBindings& bindings);

/// The remembered placements; none where none are stored or they cannot be read.
PlacementPreferences loadAppPlacementPreferences(SettingsStore& store);
void saveAppPlacementPreferences(SettingsStore& store, const PlacementPreferences& preferences);

}  // namespace tilora
