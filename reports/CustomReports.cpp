// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/CustomReports.h"

#include "platform/codepage.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/text.h"

#include <unistd.h>

#include <optional>
#include <string_view>

namespace {

constexpr std::string_view kName = "|Name=";
constexpr std::string_view kGroupTree = "|GroupTree=";
constexpr std::string_view kSQL = "|SQL=";

std::string OnDisk(const std::string& path) {
    return FindFile(FolderOf(path), FileNameOf(path)).value_or(path);
}

/// Takes one field behind another.
class Fields {
public:
    explicit Fields(std::string_view text) : mText(text) {}

    /// What stands between `key` and the next bar, which may open the next key; nothing where either lacks.
    std::optional<std::string_view> Take(std::string_view key) {
        const std::size_t start = mText.find(key, mPosition);
        if (start == std::string_view::npos)
            return std::nullopt;
        const std::size_t end = mText.find('|', start + 1);
        if (end == std::string_view::npos)
            return std::nullopt;
        mPosition = end;
        return mText.substr(start + key.size(), end - start - key.size());
    }

private:
    std::string_view mText;
    std::size_t mPosition = 0;
};

} // namespace

namespace CustomReports {

std::string ChangeFileExtension(const std::string& filename, const std::string& extension) {
    const std::size_t point = LastPositionOf(filename, ".");
    return (point == 0 ? filename : filename.substr(0, point - 1)) + extension;
}

bool FileExists(const std::string& filename) {
    const std::string path = OnDisk(filename);
    return ::FileExists(path) && access(path.c_str(), R_OK) == 0;
}

std::vector<std::string> Available(const std::string& folder) {
    const DirectoryListing documents(folder, ".RPT");
    std::vector<std::string> reports;
    for (const std::string& name : documents.Names())
        if (FileExists(JoinPath(folder, ChangeFileExtension(name, ".RNI"))))
            reports.push_back(name);
    return reports;
}

bool GetReportSet(const std::string& filename, std::string& reportName, std::string& queryString,
                  std::int16_t& displayGroup) {
    try {
        std::string text = ReadFile(OnDisk(filename));
        if (!IsUTF8(text))
            text = CodePage::System().Decode(text);
        Fields fields(text);
        const auto name = fields.Take(kName);
        const auto groupTree = name ? fields.Take(kGroupTree) : std::nullopt;
        if (!groupTree)
            return false;
        displayGroup = CInt(Val(*groupTree));
        const auto statement = fields.Take(kSQL);
        if (!statement)
            return false;
        reportName = *name;
        queryString = *statement;
        return true;
    } catch (const RunTimeError&) {
        return false; // the caller's box tells of it
    }
}

} // namespace CustomReports
