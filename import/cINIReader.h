// SPDX-License-Identifier: GPL-3.0-or-later
// Reads an inventory file by plain search over its bytes. One object serves file after file.
// A byte is a character; nothing is decoded or trimmed here, and there are no comments. The results at the
// edges are the format's: collectors write for them (see GetValue). Lines end in CR LF and in nothing else.
#pragma once

#include "import/TextSearch.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class cINIReader {
public:
    cINIReader() = default;
    // The search looks into the contents, so the object stays where it is.
    cINIReader(const cINIReader&) = delete;
    cINIReader& operator=(const cINIReader&) = delete;

    /// Reads the whole file at once. A file that cannot be read, or is larger than kLargestFile, counts as
    /// empty.
    void INIFilename(const std::string& path);
    /// The name last given.
    const std::string& INIFilename() const { return mFileName; }
    /// Forgets name and contents; the object is usable again.
    void CloseINI();
    /// Takes contents as if they had been read from a file without a name.
    void Contents(std::string contents);

    /// The value of `key` in `section`: the text behind the first "key=" after the section's header, up to
    /// the line's end. `fallback` where header or key is missing, or the key stands behind the section's
    /// end, which is the next line that ends in "]". A last line without CR LF loses its last byte.
    /// Case counts. The view lives until the contents change.
    std::string_view GetValue(std::string_view section, std::string_view key,
                              std::string_view fallback) const;

    /// Searches in the contents; what GetValue returns lies in its text.
    const TextSearch& Search() const { return mSearch; }

private:
    struct Section {
        std::string name;
        bool exists = false;
        std::size_t start = 0;
        /// The offset of the "]" that ends it, or of the end of the contents, counted as the format does.
        std::size_t end = 0;
        /// The first place of "INFO<n>=" by n, noted in one pass when a second record is asked for.
        bool isIndexed = false;
        std::vector<std::uint32_t> records;
    };

    Section& Find(std::string_view section) const;
    std::size_t KeyPlace(Section& section, std::string_view key) const;
    void IndexRecords(Section& section) const;

    std::string mFileName;
    std::string mContents;
    TextSearch mSearch;
    mutable std::vector<Section> mSections;
};
