// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/settings.h"

#include "platform/Descriptor.h"
#include "platform/ReplacedFile.h"
#include "platform/SettingsText.h"
#include "platform/errors.h"
#include "platform/files.h"

#include <QFile>
#include <QStandardPaths>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <memory>
#include <system_error>
#include <thread>

namespace {

constexpr std::chrono::seconds kLongestWait{5};
constexpr std::chrono::milliseconds kPause{10};

std::string UserFile() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return QFile::encodeName(folder + QStringLiteral("/velmora/velmora.ini")).toStdString();
}

std::string Level(const std::string& section) {
    return section + "\\";
}

/// The user's configuration folder and the console's own in it.
void MakeFolders(const std::string& path) {
    std::error_code ignored; // the opening tells
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    std::filesystem::create_directory(folder.parent_path(), ignored);
    std::filesystem::create_directory(folder, ignored);
}

/// Whether `file` still stands under its name, and has not been replaced since it was opened.
bool IsAt(const std::string& path, const Descriptor& file) {
    struct stat open {};
    struct stat named {};
    return fstat(file.Number(), &open) == 0 && stat(path.c_str(), &named) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

/// The file, made where there is none, and held against other consoles until the result goes. Its owner alone
/// can read it before anything is written: it holds the logon list.
std::unique_ptr<Descriptor> Hold(const std::string& path) {
    const auto deadline = std::chrono::steady_clock::now() + kLongestWait;
    for (;;) {
        auto file = std::make_unique<Descriptor>(path, O_RDWR | O_CREAT, S_IRUSR | S_IWUSR);
        if (fchmod(file->Number(), S_IRUSR | S_IWUSR) != 0)
            RaiseSystem(errno, path);
        // A file system without locks keeps nobody out.
        const bool isHeld = flock(file->Number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
        // Whoever held it before has put another file in its place.
        if (isHeld && IsAt(path, *file))
            return file;
        if (std::chrono::steady_clock::now() > deadline)
            Raise(Errors::kPermissionDenied, path);
        std::this_thread::sleep_for(kPause);
    }
}

} // namespace

SettingsStore::SettingsStore() : mPath(UserFile()) {}

SettingsText SettingsStore::Load() const {
    try {
        return SettingsText(ReadFile(mPath));
    } catch (const RunTimeError&) {
        return {};
    }
}

void SettingsStore::Change(const std::function<void(SettingsText&)>& change) const {
    try {
        MakeFolders(mPath);
        const std::unique_ptr<Descriptor> held = Hold(mPath);
        const std::string before = ReadFile(mPath);
        SettingsText text(before);
        change(text);
        const std::string after = text.Bytes();
        if (after == before)
            return;
        ReplacedFile file(mPath, ReplacedFile::Rights::OwnerOnly);
        file.Write(after);
        file.Commit();
    } catch (const RunTimeError& failure) {
        if (failure.number == Errors::kDiskFull)
            throw;
        Raise(Errors::kPathAccess, mPath);
    }
}

std::string SettingsStore::GetSetting(const std::string& application, const std::string& section,
                                      const std::string& key, const std::string& fallback) const {
    return Load().Get(application, Level(section) + key).value_or(fallback);
}

void SettingsStore::SaveSetting(const std::string& application, const std::string& section,
                                const std::string& key, const std::string& text) {
    Change([&](SettingsText& file) { file.Set(application, Level(section) + key, text); });
}

bool SettingsStore::HasApplication(const std::string& application) const {
    return Load().HasKeys(application, {});
}

bool SettingsStore::HasSection(const std::string& application, const std::string& section) const {
    return Load().HasKeys(application, Level(section));
}

bool SettingsStore::DeleteSection(const std::string& application, const std::string& section) {
    if (!HasSection(application, section))
        return false;
    Change([&](SettingsText& file) { file.RemoveKeys(application, Level(section)); });
    return true;
}

bool SettingsStore::DeleteSetting(const std::string& application, const std::string& section,
                                  const std::string& key) {
    if (!Load().Get(application, Level(section) + key))
        return false;
    Change([&](SettingsText& file) { file.Remove(application, Level(section) + key); });
    return true;
}
