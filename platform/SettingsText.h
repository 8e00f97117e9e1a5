// SPDX-License-Identifier: GPL-3.0-or-later
// The text of a settings file in the toolkit's own form, so that files stay what they were: "[section]"
// lines, and "key=value" lines with escaped values. Sections and keys are plain words here, kept as they are
// written; "\" parts the levels of a key. Of equal keys the last counts. Comments and lines that are neither
// are lost.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class SettingsText {
public:
    SettingsText() = default;
    explicit SettingsText(std::string_view bytes);

    /// The whole as it stands in a file.
    std::string Bytes() const;

    /// The text of a key, nothing where it is missing or has no value. A value may hold bytes that are no
    /// UTF-8.
    std::optional<std::string> Get(std::string_view section, std::string_view key) const;
    void Set(const std::string& section, const std::string& key, const std::string& text);

    /// Whether the section is there and has a key that begins so.
    bool HasKeys(std::string_view section, std::string_view begin) const;
    /// Each removes what is there.
    void Remove(std::string_view section, std::string_view key);
    void RemoveKeys(std::string_view section, std::string_view begin);

private:
    struct Entry {
        std::string section;
        std::string key;
        /// More than one where commas part the value.
        std::vector<std::string> parts;
    };
    const Entry* Find(std::string_view section, std::string_view key) const;
    void Assign(std::string section, std::string key, std::vector<std::string> parts);

    std::vector<Entry> mEntries;
};
