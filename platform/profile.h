// SPDX-License-Identifier: GPL-3.0-or-later
// A private profile: the text file of [sections] with lines "key=value" in which the collectors find what
// they are asked. Others write to it too, so what is not set stays as it is, byte for byte: other keys,
// comments, line ends, and a last line without one. Sections and keys are found without regard to case; of
// equal ones the first counts. Values are UTF-8 outside and of the system's code page in the file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

class Profile {
public:
    /// Collectors read no more of the file than this.
    static constexpr std::uint64_t kLargest = 1U << 20U;

    Profile() = default;
    explicit Profile(std::string bytes) : mBytes(std::move(bytes)) {}

    /// The profile in the file `path`, empty where there is none. Raises error 70 or 75 for a file that can't
    /// be read, and 7 for one that is larger than a profile can be.
    static Profile Load(const std::string& path);
    /// Puts the whole file in the place of the one at `path`, so that nobody reads half of it. Everybody can
    /// read a new one. One that is another's, or in a folder where no file can be made, is written where it
    /// stands. Raises what ReplacedFile raises.
    void Save(const std::string& path) const;

    /// The value, without blanks around it and without a pair of quotation marks around the rest; at most 511
    /// characters. `fallback` where section or key is missing.
    std::string Get(std::string_view section, std::string_view key, std::string_view fallback) const;
    /// Stores `value` up to its first line end or NUL, which no line can hold. A key that is missing follows
    /// the section's last one, and a section that is missing follows the file's last line.
    void Set(std::string_view section, std::string_view key, std::string_view value);

    const std::string& Bytes() const { return mBytes; }

private:
    struct Place {
        /// Where the key's value begins and ends; nothing where the section lacks the key.
        std::optional<std::size_t> valueBegin;
        std::size_t valueEnd = 0;
        /// The line that a new key follows: the end of its text, and the begin of the next line.
        std::size_t lineEnd = 0;
        std::size_t lineNext = 0;
    };
    /// Nothing where the section is missing.
    std::optional<Place> Find(std::string_view section, std::string_view key) const;
    /// Puts `text` behind the line that ends at `end`, as a line or lines of its own.
    void InsertLine(std::size_t end, std::size_t next, const std::string& text);
    std::string LineEnd() const;

    std::string mBytes;
};
