// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/profile.h"

#include "platform/Descriptor.h"
#include "platform/ReplacedFile.h"
#include "platform/codepage.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/text.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

namespace {

/// The collectors pass over the same ones.
constexpr std::string_view kBlanks{" \t\r\0", 4};

struct Line {
    std::size_t begin;
    /// Behind the text, and before the line end.
    std::size_t end;
    std::size_t next;
};

Line LineAt(std::string_view bytes, std::size_t begin) {
    const std::size_t feed = bytes.find('\n', begin);
    if (feed == std::string_view::npos)
        return {begin, bytes.size(), bytes.size()};
    return {begin, feed > begin && bytes[feed - 1] == '\r' ? feed - 1 : feed, feed + 1};
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of(kBlanks), text.size());
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

std::string_view WithoutQuotes(std::string_view text) {
    const bool isQuoted =
        text.size() >= 2 && text.front() == text.back() && (text.front() == '"' || text.front() == '\'');
    return isQuoted ? text.substr(1, text.size() - 2) : text;
}

/// The name in a section's header, whose bracket may be left open; nothing for any other line.
std::optional<std::string_view> SectionName(std::string_view text) {
    if (!text.starts_with('['))
        return std::nullopt;
    text.remove_prefix(1);
    return Trimmed(text.substr(0, text.find(']')));
}

/// Takes the room first: a full disk must not leave half of the file.
void WriteInPlace(const std::string& path, const std::string& bytes) {
    Descriptor file(path, O_WRONLY | O_NOFOLLOW | O_NONBLOCK);
    const auto size = static_cast<off_t>(bytes.size());
    if (const int error = size > 0 ? posix_fallocate(file.Number(), 0, size) : 0; error != 0)
        RaiseSystem(error, path);
    file.Write(bytes);
    if (ftruncate(file.Number(), size) != 0 || fsync(file.Number()) != 0)
        RaiseSystem(errno, path);
    file.Close();
}

} // namespace

Profile Profile::Load(const std::string& path) {
    // The file stands where clients write: a link of theirs may lead to any file of the administrator's.
    if (std::error_code ignored; std::filesystem::is_symlink(path, ignored))
        return {};
    try {
        return Profile(ReadFile(path, kLargest, FollowLinks::No));
    } catch (const RunTimeError& failure) {
        if (failure.number == Errors::kFileNotFound)
            return {};
        throw;
    }
}

void Profile::Save(const std::string& path) const {
    struct stat status {};
    const bool isThere = lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
    // Replaced, it would no longer be its owner's.
    if (isThere && status.st_uid != geteuid())
        return WriteInPlace(path, mBytes);
    try {
        ReplacedFile file(path, ReplacedFile::Rights::Shared, ReplacedFile::Links::Replace);
        file.Write(mBytes);
        file.Commit();
    } catch (const RunTimeError& failure) {
        if (!isThere || failure.number != Errors::kPermissionDenied)
            throw;
        WriteInPlace(path, mBytes);
    }
}

std::optional<Profile::Place> Profile::Find(std::string_view section, std::string_view key) const {
    const std::string_view bytes = mBytes;
    std::optional<Place> place;
    for (std::size_t begin = 0; begin < bytes.size();) {
        const Line line = LineAt(bytes, begin);
        begin = line.next;
        const std::string_view text = Trimmed(bytes.substr(line.begin, line.end - line.begin));
        const auto name = SectionName(text);
        if (name && place)
            break;
        if (name && EqualNoCase(*name, section))
            place = Place{std::nullopt, 0, line.end, line.next};
        const std::size_t equals = bytes.substr(line.begin, line.end - line.begin).find('=');
        if (name || !place || text.starts_with(';') || equals == std::string_view::npos)
            continue;
        place->lineEnd = line.end;
        place->lineNext = line.next;
        if (!EqualNoCase(Trimmed(bytes.substr(line.begin, equals)), key))
            continue;
        const std::size_t behind = line.begin + equals + 1;
        place->valueBegin = std::min(bytes.find_first_not_of(" \t", behind), line.end);
        place->valueEnd = line.end;
        break;
    }
    return place;
}

std::string Profile::Get(std::string_view section, std::string_view key, std::string_view fallback) const {
    constexpr std::size_t kBuffer = 512; // with the NUL behind the text
    const auto place = Find(section, key);
    if (!place || !place->valueBegin)
        return std::string(fallback);
    const std::string_view line = std::string_view(mBytes).substr(0, place->valueEnd);
    const std::string_view value = WithoutQuotes(Trimmed(line.substr(*place->valueBegin)));
    return CodePage::System().Decode(value.substr(0, kBuffer - 1));
}

void Profile::Set(std::string_view section, std::string_view key, std::string_view value) {
    constexpr std::string_view kUnfit{"\r\n\0", 3};
    const std::string text = CodePage::System().Encode(value.substr(0, value.find_first_of(kUnfit)));
    const std::string line = std::string(key) + "=" + text;
    const auto place = Find(section, key);
    if (!place)
        return InsertLine(mBytes.size(), mBytes.size(), "[" + std::string(section) + "]" + LineEnd() + line);
    if (!place->valueBegin)
        return InsertLine(place->lineEnd, place->lineNext, line);
    mBytes.replace(*place->valueBegin, place->valueEnd - *place->valueBegin, text);
}

void Profile::InsertLine(std::size_t end, std::size_t next, const std::string& text) {
    const bool isLastLineOpen = !mBytes.empty() && next == mBytes.size() && mBytes.back() != '\n';
    if (isLastLineOpen)
        mBytes.insert(next, LineEnd() + text);
    else
        mBytes.insert(next, text + (end < next ? mBytes.substr(end, next - end) : LineEnd()));
}

std::string Profile::LineEnd() const {
    const Line first = LineAt(mBytes, 0);
    return first.end < first.next ? mBytes.substr(first.end, first.next - first.end) : "\r\n";
}
