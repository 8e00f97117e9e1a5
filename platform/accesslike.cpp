// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/accesscall.h"
#include "platform/errors.h"

namespace Access {

namespace {

/// The character of UTF-8 text that begins `text`; a byte that begins none is one by itself.
std::string_view FirstOf(std::string_view text) {
    return FirstCharacters(text, 1);
}

bool IsRun(char c) {
    return c == '%' || c == '*';
}

/// Whether `character` lies in the ranges and single characters of `set`.
bool IsIn(std::string_view character, std::string_view set) {
    while (!set.empty()) {
        const std::string_view low = FirstOf(set);
        set.remove_prefix(low.size());
        if (set.size() < 2 || set.front() != '-') {
            if (low == character)
                return true;
            continue;
        }
        set.remove_prefix(1);
        const std::string_view high = FirstOf(set);
        set.remove_prefix(high.size());
        // The bytes of UTF-8 sort as their characters do.
        if (low <= character && character <= high)
            return true;
    }
    return false;
}

bool IsInSet(std::string_view character, std::string_view set) {
    const bool isInverted = set.starts_with('!');
    if (isInverted)
        set.remove_prefix(1);
    const bool isIn =
        IsIn(character, set) || IsIn(LowerCase(character), set) || IsIn(UpperCase(character), set);
    return isIn != isInverted;
}

struct Step {
    bool isMatch;
    /// Bytes of the pattern that stand for the character.
    std::size_t length;
};

Step MatchOne(std::string_view pattern, std::string_view character) {
    const char first = pattern.front();
    switch (first) {
        case '_':
        case '?':
            return {true, 1};
        case '#':
            return {character == "#" || (character >= "0" && character <= "9" && character.size() == 1), 1};
        case '[': {
            const std::size_t close = pattern.find(']', 1);
            if (close == std::string_view::npos)
                Raise(Errors::kInvalidCall, "Invalid pattern string");
            return {IsInSet(character, pattern.substr(1, close - 1)), close + 1};
        }
        default:
            break;
    }
    const std::string_view wanted = FirstOf(pattern);
    return {EqualNoCase(wanted, character), wanted.size()};
}

/// An empty pair of brackets stands for no character at all.
std::string_view WithoutEmptySets(std::string_view pattern) {
    while (pattern.starts_with("[]"))
        pattern.remove_prefix(2);
    return pattern;
}

} // namespace

bool IsLike(std::string_view text, std::string_view pattern) {
    // Behind the last run of any characters, and how much of the text that run has eaten so far: what follows
    // a run needs to be tried at each place, but no run before it needs to be tried again.
    std::string_view behindRun;
    std::string_view runText;
    bool hasRun = false;
    while (true) {
        pattern = WithoutEmptySets(pattern);
        if (!pattern.empty() && IsRun(pattern.front())) {
            pattern.remove_prefix(1);
            hasRun = true;
            behindRun = pattern;
            runText = text;
            continue;
        }
        if (text.empty())
            return pattern.empty();
        const std::string_view character = FirstOf(text);
        const Step step = pattern.empty() ? Step{false, 0} : MatchOne(pattern, character);
        if (step.isMatch) {
            pattern.remove_prefix(step.length);
            text.remove_prefix(character.size());
            continue;
        }
        if (!hasRun || runText.empty())
            return false;
        runText.remove_prefix(FirstOf(runText).size());
        text = runText;
        pattern = behindRun;
    }
}

} // namespace Access
