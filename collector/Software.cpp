// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Software.h"

#include "collector/Text.h"
#include "platform/text.h"

#include <algorithm>
#include <string_view>

namespace collector {

namespace {

constexpr std::size_t kStatusLimit = 64 * Sources::kUsualLimit;

struct Paragraph {
    std::string_view name, status, version, architecture, description;
};

std::string Title(std::string_view name, std::string_view version, std::string_view summary) {
    std::string title(name);
    title.append(" ").append(version);
    if (!summary.empty())
        title.append(" (").append(summary).append(")");
    return title;
}

// A package of another architecture than the machine's own is only found with that one's name.
Package DebianPackage(const Paragraph& paragraph, std::string_view nativeArchitecture) {
    const bool isForeign = !nativeArchitecture.empty() && paragraph.architecture != "all" &&
                           paragraph.architecture != nativeArchitecture;
    std::string removal = "apt-get remove " + std::string(paragraph.name);
    if (isForeign)
        removal.append(":").append(paragraph.architecture);
    return {Title(paragraph.name, paragraph.version, paragraph.description), removal};
}

void ReadLine(std::string_view line, Paragraph& paragraph) {
    // A blank begins a further line of the field before.
    if (line.starts_with(' ') || line.starts_with('\t'))
        return;
    const std::string_view field = line.substr(0, line.find(':'));
    const std::string_view value = Behind(line, ':');
    if (field == "Package")
        paragraph.name = value;
    else if (field == "Status")
        paragraph.status = value;
    else if (field == "Version")
        paragraph.version = value;
    else if (field == "Architecture")
        paragraph.architecture = value;
    else if (field == "Description")
        paragraph.description = value;
}

std::vector<Package> DebianPackages(const Sources& sources) {
    const std::string text = sources.Read("/var/lib/dpkg/status", kStatusLimit);
    const std::string native = sources.ReadLine("/var/lib/dpkg/arch");
    std::vector<Package> packages;
    Paragraph paragraph;
    const auto finish = [&] {
        if (!paragraph.name.empty() && paragraph.status.ends_with(" installed"))
            packages.push_back(DebianPackage(paragraph, native));
        paragraph = {};
    };
    for (const std::string_view line : Split(text, '\n')) {
        if (line.empty())
            finish();
        else
            ReadLine(line, paragraph);
    }
    finish();
    return packages;
}

std::vector<Package> RpmPackages(const Sources& sources) {
    const std::string text =
        sources.Run({"rpm", "-qa", "--queryformat", "%{NAME}\t%{VERSION}-%{RELEASE}\t%{SUMMARY}\n"},
                    std::chrono::seconds(30));
    std::vector<Package> packages;
    for (const std::string_view line : Split(text, '\n')) {
        const std::vector<std::string_view> fields = Split(line, '\t');
        // Keys that sign packages stand in the same list.
        if (fields.size() == 3 && fields[0] != "gpg-pubkey")
            packages.push_back({Title(fields[0], fields[1], fields[2]), "rpm -e " + std::string(fields[0])});
    }
    return packages;
}

// "5.2.0" of "/usr/lib/libodbc.so.5.2.0".
std::string VersionOf(std::string_view library) {
    constexpr std::string_view mark = ".so.";
    const auto place = library.rfind(mark);
    return place == std::string_view::npos ? std::string() : std::string(library.substr(place + mark.size()));
}

} // namespace

std::vector<Package> InstalledPackages(const Sources& sources) {
    std::vector<Package> packages =
        sources.Exists("/var/lib/dpkg/status") ? DebianPackages(sources) : RpmPackages(sources);
    std::stable_sort(packages.begin(), packages.end(),
                     [](const Package& one, const Package& other) { return one.name < other.name; });
    return packages;
}

std::vector<DatabaseDriver> DatabaseDrivers(const Sources& sources) {
    std::vector<DatabaseDriver> drivers;
    const std::string text = sources.Read("/etc/odbcinst.ini");
    bool isDriver = false;
    for (std::string_view line : Split(text, '\n')) {
        line = Trimmed(line);
        if (line.starts_with('[') && line.ends_with(']')) {
            const std::string_view name = Trimmed(line.substr(1, line.size() - 2));
            // Two sections are settings of the driver manager.
            isDriver = !name.empty() && !EqualNoCase(name, "ODBC") && !EqualNoCase(name, "ODBC Drivers");
            if (isDriver)
                drivers.emplace_back().name = name;
            continue;
        }
        const std::string_view key = Trimmed(line.substr(0, line.find('=')));
        const bool isPath = EqualNoCase(key, "Driver64") || EqualNoCase(key, "Driver");
        if (!isDriver || !isPath || (!drivers.back().path.empty() && !EqualNoCase(key, "Driver64")))
            continue;
        drivers.back().path = Behind(line, '=');
    }
    for (DatabaseDriver& driver : drivers)
        driver.version = VersionOf(sources.Resolved(driver.path));
    return drivers;
}

} // namespace collector
