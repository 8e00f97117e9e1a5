// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Text.h"

#include <charconv>

namespace collector {

namespace {
constexpr std::string_view kBlank{" \t\r\n\0", 5};
} // namespace

std::string_view Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(kBlank);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    if (text.empty())
        return parts;
    for (;;) {
        const auto end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return parts;
        text.remove_prefix(end + 1);
    }
}

std::vector<std::string_view> Words(std::string_view text) {
    std::vector<std::string_view> words;
    for (auto start = text.find_first_not_of(kBlank); start != std::string_view::npos;) {
        const auto end = text.find_first_of(kBlank, start);
        words.push_back(text.substr(start, end - start));
        start = text.find_first_not_of(kBlank, end);
    }
    return words;
}

std::string_view Behind(std::string_view line, char separator) {
    const auto place = line.find(separator);
    return place == std::string_view::npos ? std::string_view() : Trimmed(line.substr(place + 1));
}

std::optional<std::uint64_t> WholeNumber(std::string_view text, int base) {
    text = Trimmed(text);
    if (base == 16 && (text.starts_with("0x") || text.starts_with("0X")))
        text.remove_prefix(2);
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, base);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return number;
}

} // namespace collector
