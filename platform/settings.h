// SPDX-License-Identifier: GPL-3.0-or-later
// The per-user settings store: a table of texts by application, section and key, in one file of the user's
// configuration folder. All values are text; who reads a number converts it.
#pragma once

#include <memory>
#include <string>

class QSettings;

class SettingsStore {
public:
    /// The user's own store.
    SettingsStore();
    /// A store in the file `path`, for tests.
    explicit SettingsStore(const std::string& path);
    ~SettingsStore();
    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;

    /// The stored text, or `fallback` where there is none.
    std::string GetSetting(const std::string& application, const std::string& section, const std::string& key,
                           const std::string& fallback) const;
    /// Stores a text; it is on disk when the call returns. Raises error 75 where the file can't be written.
    void SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                     const std::string& text);

    bool HasApplication(const std::string& application) const;
    bool HasSection(const std::string& application, const std::string& section) const;
    /// Each returns whether there was something to delete.
    bool DeleteSection(const std::string& application, const std::string& section);
    bool DeleteSetting(const std::string& application, const std::string& section, const std::string& key);

private:
    std::unique_ptr<QSettings> mFile;
};
