// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Startup.h"

#include "collector/InventoryFile.h"
#include "collector/Sources.h"
#include "collector/Text.h"
#include "platform/text.h"

#include <algorithm>
#include <map>

namespace collector {

namespace {

using Values = std::map<std::string, std::string_view>;

std::string_view WithoutQuotes(std::string_view text) {
    const bool isQuoted =
        text.size() >= 2 && text.front() == text.back() && (text.front() == '"' || text.front() == '\'');
    return isQuoted ? text.substr(1, text.size() - 2) : text;
}

Values StartupValues(std::string_view text) {
    Values values;
    bool isInSection = false;
    for (std::string_view line : Split(text, '\n')) {
        line = Trimmed(line);
        const auto equals = line.find('=');
        if (line.starts_with('[') && isInSection)
            break; // of equal sections the first counts, as it does for the console
        if (line.starts_with('['))
            isInSection = EqualNoCase(Trimmed(line.substr(1, line.find(']') - 1)), "STARTUP");
        else if (isInSection && !line.starts_with(';') && equals != std::string_view::npos)
            values.emplace(UpperCase(Trimmed(line.substr(0, equals))), WithoutQuotes(Behind(line, '=')));
    }
    return values;
}

} // namespace

StartupOptions ParseStartupOptions(std::string_view text) {
    constexpr std::int16_t longestDelay = 600;
    Values values = StartupValues(text);
    StartupOptions options;
    const std::int16_t delay = ShortOrNothing(values["DELAYTIMER"]).value_or(longestDelay);
    options.delay = std::chrono::seconds(std::clamp(delay, std::int16_t{0}, longestDelay));
    options.isAudible = ShortOrNothing(values["PINGSOUND"]) == 1;
    return options;
}

StartupOptions ReadStartupOptions(const std::filesystem::path& folder) {
    const std::filesystem::path file = FileIgnoringCase(folder, "MOVANTA.INI");
    return ParseStartupOptions(Sources(folder).Read(file.filename().string()));
}

std::chrono::seconds TimeToWait(std::chrono::seconds delay, std::optional<std::time_t> logon,
                                std::time_t now) {
    if (!logon)
        return std::chrono::seconds(0);
    if (*logon > now)
        return delay;
    const std::chrono::seconds passed(now - *logon);
    return std::max(std::chrono::seconds(0), delay - passed);
}

} // namespace collector
