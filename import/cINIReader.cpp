// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/cINIReader.h"

#include "platform/errors.h"
#include "platform/files.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kRecordKey = "INFO";

/// A count of records is a 16-bit integer, so no number above this is ever asked for.
constexpr std::size_t kMostRecords = 32767;

constexpr std::uint32_t kNoPlace = 0xFFFFFFFF;

/// The number of a key such as "INFO12", if it is written as the format writes it.
std::optional<std::size_t> RecordNumber(std::string_view digits) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool isCanonical = !digits.empty() && (digits.front() != '0' || digits.size() == 1);
    if (error != std::errc() || end != digits.data() + digits.size() || !isCanonical || number > kMostRecords)
        return std::nullopt;
    return number;
}

} // namespace

void cINIReader::INIFilename(const std::string& path) {
    CloseINI();
    mFileName = path;
    try {
        Contents(ReadFile(path));
    } catch (const RunTimeError&) {
        // A file that can't be read is one without sections.
    }
}

void cINIReader::CloseINI() {
    mFileName.clear();
    Contents({});
}

void cINIReader::Contents(std::string contents) {
    mContents.swap(contents);
    mSearch.Text(mContents);
    mSections.clear();
}

std::string_view cINIReader::GetValue(std::string_view section, std::string_view key,
                                      std::string_view fallback) const {
    Section& place = Find(section);
    if (!place.exists)
        return fallback;
    const std::size_t keyPlace = KeyPlace(place, key);
    if (keyPlace == TextSearch::kNowhere)
        return fallback;
    const std::size_t start = keyPlace + key.size() + 1;
    std::size_t end = mSearch.Find(kLineEnd, keyPlace, mContents.size());
    if (end == TextSearch::kNowhere)
        end = mContents.size() - 1;
    if (end < start)
        return fallback;
    return std::string_view(mContents).substr(start, end - start);
}

cINIReader::Section& cINIReader::Find(std::string_view section) const {
    const auto known = std::find_if(mSections.begin(), mSections.end(),
                                    [section](const Section& entry) { return entry.name == section; });
    if (known != mSections.end())
        return *known;
    Section& found = mSections.emplace_back();
    found.name = section;
    const std::string header = "[" + found.name + "]\r\n";
    found.start = mContents.find(header);
    found.exists = found.start != std::string::npos;
    if (found.exists) {
        const std::size_t end = mContents.find("]\r\n", found.start + header.size());
        found.end = end == std::string::npos ? mContents.size() - 1 : end;
    }
    return found;
}

std::size_t cINIReader::KeyPlace(Section& section, std::string_view key) const {
    if (key.starts_with(kRecordKey)) {
        // Only a second record is worth the pass over the section.
        const std::optional<std::size_t> number = RecordNumber(key.substr(kRecordKey.size()));
        if (number && *number > 0) {
            IndexRecords(section);
            const bool isKnown = *number < section.records.size() && section.records[*number] != kNoPlace;
            return isKnown ? section.records[*number] : TextSearch::kNowhere;
        }
    }
    const std::string needle = std::string(key) + "=";
    return mSearch.Find(needle, section.start, section.end + needle.size());
}

void cINIReader::IndexRecords(Section& section) const {
    if (section.isIndexed)
        return;
    section.isIndexed = true;
    const std::string_view text = std::string_view(mContents).substr(0, section.end + 1);
    for (std::size_t place = text.find(kRecordKey, section.start); place != std::string_view::npos;
         place = text.find(kRecordKey, place + 1)) {
        const std::size_t digits = place + kRecordKey.size();
        const std::size_t digitsEnd = std::min(text.find_first_not_of("0123456789", digits), text.size());
        if (digitsEnd >= mContents.size() || mContents[digitsEnd] != '=')
            continue;
        const std::optional<std::size_t> number = RecordNumber(text.substr(digits, digitsEnd - digits));
        if (!number)
            continue;
        if (section.records.size() <= *number)
            section.records.resize(*number + 1, kNoPlace);
        if (section.records[*number] == kNoPlace)
            section.records[*number] = static_cast<std::uint32_t>(place);
    }
}
