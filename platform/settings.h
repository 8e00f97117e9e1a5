// SPDX-License-Identifier: GPL-3.0-or-later
// The per-user settings store: a table of texts by application, section and key, in one file of the user's
// configuration folder. All values are text; who reads a number converts it. Consoles that run at the same
// time share the file: each read takes it as it is, and each change is made to it as it is then.
#pragma once

#include <functional>
#include <string>

class SettingsText;

class SettingsStore {
public:
    /// The user's own store.
    SettingsStore();
    /// A store in the file `path`, for tests.
    explicit SettingsStore(std::string path) : mPath(std::move(path)) {}

    /// The stored text, or `fallback` where there is none, or no file that can be read.
    std::string GetSetting(const std::string& application, const std::string& section, const std::string& key,
                           const std::string& fallback) const;
    /// Stores a text; it is on disk when the call returns. Raises error 61 where the disk is full, and 75
    /// where the file can't be written for any other reason; the file stays as it was then. The file's folder
    /// and the one above are made where they are missing, but no more: a home that is gone is not made anew.
    void SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                     const std::string& text);

    bool HasApplication(const std::string& application) const;
    bool HasSection(const std::string& application, const std::string& section) const;
    /// Each returns whether there was something to delete, and raises what SaveSetting raises.
    bool DeleteSection(const std::string& application, const std::string& section);
    bool DeleteSetting(const std::string& application, const std::string& section, const std::string& key);

private:
    SettingsText Load() const;
    void Change(const std::function<void(SettingsText&)>& change) const;

    std::string mPath;
};
