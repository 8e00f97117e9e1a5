// SPDX-License-Identifier: GPL-3.0-or-later
// What the administrator asks of all collectors, from MOVANTA.INI beside the program: how long after
// a logon to begin, and whether to be heard. Without the file, or without a key, nothing is asked.
#pragma once

#include <chrono>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace collector {

struct StartupOptions {
    std::chrono::seconds delay{0}; // after the logon; 0 to 600
    bool isAudible = false;
};

/// `text` is the content of MOVANTA.INI; section and keys in any case, the first of equal keys counts.
StartupOptions ParseStartupOptions(std::string_view text);

/// The options for a program in `folder`.
StartupOptions ReadStartupOptions(const std::filesystem::path& folder);

/// What is left of `delay` at `now` after a logon; all of it when the clock was set back since. Nothing when
/// the logon is not known: whoever starts the console must not wait for it.
std::chrono::seconds TimeToWait(std::chrono::seconds delay, std::optional<std::time_t> logon,
                                std::time_t now);

} // namespace collector
