// SPDX-License-Identifier: GPL-3.0-or-later
#include "archive/VBZip.h"

#include "archive/DeflatedFile.h"
#include "archive/ZipFileSink.h"
#include "core/LongWork.h"
#include "platform/Descriptor.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/prompts.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <zip.h>

#include <cerrno>
#include <filesystem>
#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

struct Discard {
    void operator()(zip_t* archive) const { zip_discard(archive); }
};
struct CloseEntry {
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};
struct FreeSource {
    void operator()(zip_source_t* source) const { zip_source_free(source); }
};
using Archive = std::unique_ptr<zip_t, Discard>;
using Source = std::unique_ptr<zip_source_t, FreeSource>;

[[noreturn]] void RaiseZip(zip_error_t& error, const std::string& path) {
    if (zip_error_code_zip(&error) == ZIP_ER_NOENT)
        Raise(Errors::kFileNotFound, path);
    if (zip_error_system_type(&error) == ZIP_ET_SYS && zip_error_code_system(&error) != 0)
        RaiseSystem(zip_error_code_system(&error), path);
    throw RunTimeError(Errors::kPathAccess, std::string(zip_error_strerror(&error)) + ": " + path);
}

/// Opens an archive on `source`, which it takes over.
Archive Open(Source source, int flags, const std::string& path, zip_error_t& error) {
    Archive archive(source ? zip_open_from_source(source.get(), flags, &error) : nullptr);
    if (!archive)
        RaiseZip(error, path);
    // NOLINTNEXTLINE(bugprone-unused-return-value): the archive owns it from here on
    static_cast<void>(source.release());
    return archive;
}

class ErrorOfLibrary {
public:
    ErrorOfLibrary() { zip_error_init(&mError); }
    ~ErrorOfLibrary() { zip_error_fini(&mError); }
    ErrorOfLibrary(const ErrorOfLibrary&) = delete;
    ErrorOfLibrary& operator=(const ErrorOfLibrary&) = delete;
    zip_error_t& Get() { return mError; }

private:
    zip_error_t mError{};
};

/// In bytes.
constexpr std::uint64_t kLarge = 4 * ParallelDeflate::kBlock;

struct PackedFile {
    std::string path;
    std::string entryName;
};

std::vector<PackedFile> FilesOf(const std::string& source, const std::string& entryName) {
    const std::string folder = FolderOf(source);
    const std::string name = FileNameOf(source);
    if (!name.starts_with("*.")) {
        // Opening tells a file that may not be read from one that is not there.
        ReadableLength(source);
        return {{source, entryName.empty() ? name : entryName}};
    }
    std::vector<PackedFile> files;
    const DirectoryListing listing(folder, name.substr(1));
    // Each spelling of a name is a file that would be missed.
    for (const std::string& each : listing.Names())
        for (const std::string& spelling : listing.Spellings(each)) {
            std::string path = JoinPath(folder, spelling);
            // Clients write here: a link of theirs may lead to any file of the administrator's.
            if (std::error_code ignored; !std::filesystem::is_symlink(path, ignored))
                files.push_back({std::move(path), spelling});
        }
    return files;
}

/// Adds the file to the archive, by `large` where it is one that is compressed on all cores.
void Add(zip_t& archive, const PackedFile& file, DeflatedFile* large) {
    // The library opens it when the archive is closed, and does not tell which file could not be.
    const Descriptor opened(file.path, O_RDONLY | O_NONBLOCK);
    struct stat status {};
    if (fstat(opened.Number(), &status) != 0)
        RaiseSystem(errno, file.path);
    // A pipe would be waited for.
    if (!S_ISREG(status.st_mode))
        Raise(Errors::kPathAccess, file.path);
    Source source(large != nullptr ? large->Source(*zip_get_error(&archive))
                                   : zip_source_file(&archive, file.path.c_str(), 0, -1));
    const zip_int64_t entry =
        source ? zip_file_add(&archive, file.entryName.c_str(), source.get(), ZIP_FL_ENC_GUESS) : -1;
    if (entry < 0)
        RaiseZip(*zip_get_error(&archive), file.path);
    // NOLINTNEXTLINE(bugprone-unused-return-value): the archive owns it from here on
    static_cast<void>(source.release());
    const auto place = static_cast<zip_uint64_t>(entry);
    constexpr unsigned kRightsShift = 16;
    if (zip_set_file_compression(&archive, place, ZIP_CM_DEFLATE, 0) != 0 ||
        zip_file_set_external_attributes(&archive, place, 0, ZIP_OPSYS_UNIX,
                                         status.st_mode << kRightsShift) != 0)
        RaiseZip(*zip_get_error(&archive), file.path);
}

void Pack(const VBZip::Window& window, const std::string& source, const std::string& path,
          const std::string& entryName) {
    const std::vector<PackedFile> files = FilesOf(source, entryName);
    if (files.empty())
        Raise(Errors::kFileNotFound, source);
    ShownWork work(window.form);
    ReplacedFile::ClearAbandoned(FolderOf(path));
    ReplacedFile target(path, ReplacedFile::Rights::OwnerOnly);
    ZipFileSink sink(target);
    // It moves the bar itself. Smaller files, and a folder of them, would gain little.
    std::optional<DeflatedFile> large;
    if (files.size() == 1 && FileLength(files.front().path) >= kLarge)
        large.emplace(files.front().path, work);
    ErrorOfLibrary error;
    Archive archive = Open(Source(sink.Source(error.Get())), ZIP_CREATE | ZIP_TRUNCATE, path, error.Get());
    for (const PackedFile& file : files)
        Add(*archive, file, large ? &*large : nullptr);
    constexpr double kPrecision = 0.0001;
    if (!large)
        zip_register_progress_callback_with_state(
            archive.get(), kPrecision,
            [](zip_t* /*archive*/, double done, void* state) {
                static_cast<ShownWork*>(state)->Look(done, 1);
            },
            nullptr, &work);
    if (zip_close(archive.get()) != 0) {
        if (large)
            large->RaiseFailure();
        RaiseZip(*zip_get_error(archive.get()), path);
    }
    // NOLINTNEXTLINE(bugprone-unused-return-value): closing has freed it
    static_cast<void>(archive.release());
    LongWork::Aside([&] { target.Commit(); });
}

/// An archive's way into a folder.
class Unpacking {
public:
    Unpacking(const VBZip::Window& window, const std::string& path, std::string folder)
        : mWindow(window), mPath(path), mFolder(std::move(folder)), mWork(window.form) {
        // The library takes a file of no bytes for an archive of no entries.
        if (ReadableLength(path) == 0 || !FileExists(path))
            throw RunTimeError(Errors::kPathAccess, "Not a zip archive: " + path);
        ErrorOfLibrary error;
        Source source(zip_source_file_create(path.c_str(), 0, -1, &error.Get()));
        mArchive = Open(std::move(source), ZIP_RDONLY, path, error.Get());
        const DirectoryListing listing(mFolder);
        for (const std::string& name : listing.Names())
            mPresent.emplace(LowerCase(name), name);
    }

    void Run() {
        const auto entries = static_cast<zip_uint64_t>(zip_get_num_entries(mArchive.get(), 0));
        for (zip_uint64_t entry = 0; entry < entries; ++entry)
            if (IsData(entry))
                mExpected += static_cast<double>(StatusOf(entry).size);
        struct statvfs disk {};
        if (statvfs(mFolder.c_str(), &disk) != 0)
            RaiseSystem(errno, mFolder);
        // A file system that knows no size of its own tells zeros.
        const double free = static_cast<double>(disk.f_bavail) * static_cast<double>(disk.f_frsize);
        // The folder itself is temporary, so its name would tell the user nothing.
        if (disk.f_blocks != 0 && mExpected >= free)
            Raise(Errors::kDiskFull, FolderOf(mFolder));
        for (zip_uint64_t entry = 0; entry < entries; ++entry)
            Unpack(entry);
    }

private:
    zip_stat_t StatusOf(zip_uint64_t entry) {
        constexpr zip_uint64_t kNeeded =
            ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_ENCRYPTION_METHOD;
        zip_stat_t status{};
        if (zip_stat_index(mArchive.get(), entry, 0, &status) != 0)
            RaiseZip(*zip_get_error(mArchive.get()), mPath);
        if ((status.valid & kNeeded) != kNeeded)
            throw RunTimeError(Errors::kPathAccess, "The archive does not tell what it holds");
        return status;
    }

    void Unpack(zip_uint64_t entry) {
        const zip_stat_t status = StatusOf(entry);
        const std::string name = LastPart(status.name);
        if (name.empty() || name == "." || name == ".." || !IsData(entry))
            return;
        if (status.encryption_method != ZIP_EM_NONE)
            throw RunTimeError(Errors::kPermissionDenied, "The entry is encrypted: " + name);
        CheckSize(status, name);
        if (!MakeWay(name))
            return;
        const std::unique_ptr<zip_file_t, CloseEntry> from(zip_fopen_index(mArchive.get(), entry, 0));
        if (!from)
            RaiseZip(*zip_get_error(mArchive.get()), name);
        Descriptor to(JoinPath(mFolder, name), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, S_IRUSR | S_IWUSR);
        Copy(*from, to, status.size, name);
        to.Close();
    }

    /// A name behind the separators of any system.
    static std::string LastPart(std::string_view name) {
        const std::size_t separator = name.find_last_of("/\\");
        return std::string(separator == std::string_view::npos ? name : name.substr(separator + 1));
    }

    /// Whether the entry holds a file's data. As a link or a device it could lead out of the folder, and what
    /// it leads to is no part of the archive.
    bool IsData(zip_uint64_t entry) const {
        constexpr unsigned kModeShift = 16;
        zip_uint8_t system = 0;
        zip_uint32_t attributes = 0;
        zip_file_get_external_attributes(mArchive.get(), entry, 0, &system, &attributes);
        const mode_t kind = (attributes >> kModeShift) & S_IFMT;
        // Other systems than this one leave it empty.
        return kind == 0 || kind == S_IFREG;
    }

    static void CheckSize(const zip_stat_t& status, const std::string& name) {
        constexpr std::uint64_t kMostSwelling = 100;
        constexpr std::uint64_t kHarmless = std::uint64_t{4} << 30U;
        if (status.size > kHarmless && status.size / kMostSwelling > status.comp_size)
            throw RunTimeError(Errors::kOutOfMemory,
                               "The entry is too large for what it is packed in: " + name);
    }

    /// False where a file of this name is there already and is to stay.
    bool MakeWay(const std::string& name) {
        const auto [present, isNew] = mPresent.try_emplace(LowerCase(name), name);
        if (isNew)
            return true;
        MsgBoxAnswer answer = MsgBoxAnswer::No;
        mWork.Pause([&] {
            answer = mWindow.prompts.MsgBox(
                "Overwrite " + name + "?",
                MsgBoxStyle::kYesNo + MsgBoxStyle::kCritical + MsgBoxStyle::kDefaultButton2,
                "VBUnzip - File already exists");
        });
        if (answer != MsgBoxAnswer::Yes)
            return false;
        DeleteFile(JoinPath(mFolder, present->second));
        present->second = name;
        return true;
    }

    void Copy(zip_file_t& from, Descriptor& to, std::uint64_t size, const std::string& name) {
        std::uint64_t done = 0;
        // The last read, of nothing, is the one that compares the checksum.
        for (;;) {
            const zip_int64_t count = zip_fread(&from, mBlock.data(), mBlock.size());
            if (count < 0)
                RaiseZip(*zip_file_get_error(&from), name);
            if (count == 0)
                break;
            done += static_cast<std::uint64_t>(count);
            if (done > size)
                throw RunTimeError(Errors::kPathAccess, "The entry is longer than it says: " + name);
            to.Write({mBlock.data(), static_cast<std::size_t>(count)});
            mUnpacked += static_cast<double>(count);
            mWork.Look(mUnpacked, mExpected);
        }
        if (done != size)
            throw RunTimeError(Errors::kPathAccess, "The entry is shorter than it says: " + name);
    }

    static constexpr std::size_t kBlock = std::size_t{256} << 10U;

    const VBZip::Window& mWindow;
    std::string mPath;
    std::string mFolder;
    ShownWork mWork;
    Archive mArchive;
    std::string mBlock = std::string(kBlock, '\0');
    /// What the folder holds, by names in lower case.
    std::unordered_map<std::string, std::string> mPresent;
    /// Bytes of all entries.
    double mExpected = 0;
    double mUnpacked = 0;
};

/// Whether `work` ended without a failure; one is told in a box.
bool Succeeds(Prompts& prompts, const std::function<void()>& work) {
    try {
        work();
        return true;
    } catch (const RunTimeError& failure) {
        prompts.MsgBox(failure.description, MsgBoxStyle::kCritical, "Error #" + NumberText(failure.number));
        return false;
    }
}

} // namespace

bool VBZip::ZipFile(const Window& window, const std::string& source, const std::string& archive,
                    const std::string& entryName) {
    return Succeeds(window.prompts, [&] { Pack(window, source, archive, entryName); });
}

bool VBZip::UnzipFile(const Window& window, const std::string& archive, const std::string& folder) {
    return Succeeds(window.prompts, [&] { Unpacking(window, archive, folder).Run(); });
}
