// SPDX-License-Identifier: GPL-3.0-or-later
// The records of an inventory file. Facts come in as UTF-8 of any content, since package maintainers
// and device makers write them; what goes out is the 8-bit code page of the machine's locale, as the
// console reads it by its own, and nothing that a reader could misread: values hold no separator, no
// "=" and no control character, and fit the console's columns. Devices most of all: the console drops
// a machine's remaining devices at the first value that is too long.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace collector {

/// The console's counts have 16 bits: one beyond them would end its whole import.
constexpr std::size_t kMostRows = 32767;

/// `text` fit for a record: "|", ";" and "=" become "/", "," and "-", runs of blanks and control
/// characters become one blank, none at the ends; what the code page lacks becomes "?". At most
/// `width` characters, one byte each.
std::string Value(std::string_view text, std::size_t width);

/// Fields each closed by "|". An empty first field is written as one blank: a record that begins
/// with "|" would hand its first bar to the reader as a value.
template <std::size_t N>
std::string Positional(const std::array<std::string, N>& fields, const std::array<std::size_t, N>& widths) {
    std::string record;
    for (std::size_t i = 0; i < N; ++i) {
        record += Value(fields[i], widths[i]);
        if (record.empty())
            record = " ";
        record += '|';
    }
    return record;
}

/// Pairs `Tag=value`, in the order in which they are added. A reader takes the first place of "Tag=",
/// so a tag that ends in another one's name must come behind it.
class TaggedRecord {
public:
    TaggedRecord& Add(std::string_view tag, std::string_view text, std::size_t width, char terminator);

    /// As Add, but the value goes in as it is: for values whose blanks count.
    TaggedRecord& AddExact(std::string_view tag, std::string_view value, char terminator);

    const std::string& Text() const { return mText; }

private:
    std::string mText;
};

} // namespace collector
