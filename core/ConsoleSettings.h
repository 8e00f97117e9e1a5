// SPDX-License-Identifier: GPL-3.0-or-later
// Where the console's own settings stand in the store: all under one application and one section.
#pragma once

#include "platform/settings.h"

#include <string>

namespace ConsoleSettings {

constexpr const char* kApplication = "Velmora";
constexpr const char* kSection = "Settings";

/// The stored text, `fallback` where there is none.
inline std::string Get(const SettingsStore& store, const std::string& key, const std::string& fallback = {}) {
    return store.GetSetting(kApplication, kSection, key, fallback);
}

/// Raises error 61 or 75 where the store can't be written.
inline void Save(SettingsStore& store, const std::string& key, const std::string& text) {
    store.SaveSetting(kApplication, kSection, key, text);
}

} // namespace ConsoleSettings
