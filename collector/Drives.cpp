// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Drives.h"

#include "collector/Record.h"
#include "collector/Text.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <utility>

namespace collector {

namespace {

struct Mount {
    std::string deviceNumber;
    std::string part; // the folder of the file system that is mounted
    std::string point;
    std::string type;
    std::string source;
    std::string options;
};

constexpr std::array<std::string_view, 17> kNetworkTypes = {
    "nfs",       "nfs4", "cifs",   "smb3",  "smbfs",    "ncpfs",          "afs",        "ceph",        "9p",
    "glusterfs", "coda", "lustre", "davfs", "virtiofs", "fuse.glusterfs", "fuse.sshfs", "fuse.rclone",
};

template <std::size_t N>
bool IsOneOf(std::string_view text, const std::array<std::string_view, N>& list) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

// Blanks, tabs, line ends and backslashes stand as three octal digits in the kernel's list of mounts.
std::string WithoutOctal(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto code = text[i] == '\\' ? WholeNumber(text.substr(i + 1, 3), 8) : std::nullopt;
        if (!code || i + 3 >= text.size() || *code > 255) {
            plain += text[i];
            continue;
        }
        plain += static_cast<char>(static_cast<unsigned char>(*code));
        i += 3;
    }
    return plain;
}

// A line reads: id parent device part point options [tag...] - type source options-of-the-file-system
std::optional<Mount> ParseMount(std::string_view line) {
    const std::vector<std::string_view> words = Words(line);
    const auto dash = std::find(words.begin(), words.end(), "-");
    if (dash - words.begin() < 6 || words.end() - dash < 3)
        return std::nullopt;
    return Mount{.deviceNumber = std::string(words[2]),
                 .part = WithoutOctal(words[3]),
                 .point = WithoutOctal(words[4]),
                 .type = std::string(dash[1]),
                 .source = WithoutOctal(dash[2]),
                 .options = words.end() - dash > 3 ? std::string(dash[3]) : std::string()};
}

// What is visible: of mounts on the same point, the last.
std::vector<Mount> VisibleMounts(const Sources& sources) {
    std::vector<Mount> mounts;
    const std::string text = sources.Read("/proc/self/mountinfo", 8 * Sources::kUsualLimit);
    for (const std::string_view line : Split(text, '\n'))
        if (std::optional<Mount> mount = ParseMount(line))
            mounts.push_back(*std::move(mount));
    std::reverse(mounts.begin(), mounts.end());
    std::set<std::string> points;
    std::vector<Mount> visible;
    for (const Mount& mount : mounts)
        if (points.insert(mount.point).second)
            visible.push_back(mount);
    std::reverse(visible.begin(), visible.end());
    return visible;
}

// A part of a file system that is shown in a second place. Subvolumes are parts by nature.
bool IsBindMount(const Mount& mount) {
    return mount.part != "/" && mount.point != "/" && mount.type != "btrfs";
}

bool IsInSystemFolder(std::string_view point) {
    constexpr std::array<std::string_view, 4> folders = {"/dev", "/proc", "/run", "/sys"};
    const auto end = point.find('/', 1);
    return IsOneOf(point.substr(0, end), folders);
}

// "sda1" for /dev/sda1, "dm-0" for /dev/mapper/vg-root.
std::string DeviceName(const Sources& sources, const std::string& path) {
    const std::string resolved = sources.Resolved(path);
    const std::string& name = resolved.empty() ? path : resolved;
    return name.substr(name.rfind('/') + 1);
}

bool IsRemovable(const Sources& sources, const std::string& device) {
    const std::string folder = sources.Resolved("/sys/class/block/" + device);
    const bool isPartition = sources.Exists(folder + "/partition");
    const std::string disk = isPartition ? folder.substr(0, folder.rfind('/')) : folder;
    return !disk.empty() && sources.ReadLine(disk + "/removable") == "1";
}

// The name of the link in a folder below /dev/disk that leads to `device`.
std::string DiskLink(const Sources& sources, const std::string& folder, const std::string& device) {
    for (const std::string& name : sources.List(folder))
        if (DeviceName(sources, folder + name) == device)
            return name;
    return {};
}

// udev writes what it does not like in a label as \x and two hexadecimal digits.
std::string WithoutHex(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text.substr(i, 2) == "\\x" && i + 3 < text.size();
        const auto code = isEscape ? WholeNumber(text.substr(i + 2, 2), 16) : std::nullopt;
        plain += code ? static_cast<char>(static_cast<unsigned char>(*code)) : text[i];
        i += code ? 3 : 0;
    }
    return plain;
}

std::string Option(const std::string& options, std::string_view key) {
    for (const std::string_view option : Split(options, ','))
        if (option.starts_with(key) && option.substr(key.size()).starts_with('='))
            return std::string(option.substr(key.size() + 1));
    return {};
}

Drive DriveAt(const Sources& sources, const Mount& mount, DriveKind kind) {
    Drive drive;
    drive.kind = kind;
    drive.root = mount.point;
    drive.fileSystem = mount.type;
    drive.space = sources.SpaceOf(mount.point);
    if (kind == DriveKind::Network) {
        drive.mapping = mount.source;
        drive.user = Option(mount.options, "username");
    } else if (mount.source.starts_with("/dev/")) {
        const std::string device = DeviceName(sources, mount.source);
        drive.label = WithoutHex(DiskLink(sources, "/dev/disk/by-label/", device));
        drive.serial = DiskLink(sources, "/dev/disk/by-uuid/", device);
    }
    return drive;
}

std::vector<std::string> OpticalDevices(const Sources& sources) {
    std::vector<std::string> names;
    const std::string text = sources.Read("/proc/sys/dev/cdrom/info");
    for (const std::string_view line : Split(text, '\n'))
        if (line.starts_with("drive name:"))
            for (const std::string_view name : Words(Behind(line, ':')))
                names.emplace_back(name);
    std::sort(names.begin(), names.end());
    return names;
}

std::size_t CountRemovable(const Sources& sources) {
    std::size_t count = 0;
    for (const std::string& disk : sources.List("/sys/block"))
        if (!disk.starts_with("sr") && IsRemovable(sources, disk))
            ++count;
    return count;
}

enum class MountKind { None, Fixed, Optical, Network, Memory };

// A block device's mount. Removable ones are counted as drives, mounted or not, and a loop device is
// a file of another drive.
MountKind BlockKind(const Sources& sources, const Mount& mount) {
    const std::string device = DeviceName(sources, mount.source);
    if (device.starts_with("sr") || mount.type == "iso9660" || mount.type == "udf")
        return MountKind::Optical;
    if (device.starts_with("ram") || device.starts_with("zram"))
        return MountKind::Memory;
    if (device.starts_with("loop") || IsRemovable(sources, device))
        return mount.point == "/" ? MountKind::Fixed : MountKind::None;
    return MountKind::Fixed;
}

MountKind KindOf(const Sources& sources, const Mount& mount) {
    if (IsBindMount(mount))
        return MountKind::None;
    if (mount.point != "/" && IsInSystemFolder(mount.point) && !mount.source.starts_with("/dev/"))
        return IsOneOf(mount.type, kNetworkTypes) ? MountKind::Network : MountKind::None;
    if (mount.source.starts_with("/dev/"))
        return BlockKind(sources, mount);
    const bool isVirtualRoot = mount.point == "/" && (mount.type == "9p" || mount.type == "virtiofs");
    if (IsOneOf(mount.type, kNetworkTypes) && !isVirtualRoot)
        return MountKind::Network;
    if (mount.type == "tmpfs" || mount.type == "ramfs")
        return MountKind::Memory;
    // A container's root is an overlay; that is the disk that its programs have.
    return mount.point == "/" || mount.type == "zfs" ? MountKind::Fixed : MountKind::None;
}

void AddOpticalWithoutDisc(const Sources& sources, const std::set<std::string>& mounted, Drives& drives) {
    for (const std::string& name : OpticalDevices(sources)) {
        if (mounted.contains(name))
            continue;
        Drive drive;
        drive.kind = DriveKind::Optical;
        drive.root = "/dev/" + name;
        drives.listed.push_back(drive);
    }
}

} // namespace

std::size_t Drives::Count(DriveKind kind) const {
    const auto count = std::count_if(listed.begin(), listed.end(),
                                     [kind](const Drive& drive) { return drive.kind == kind; });
    return static_cast<std::size_t>(count);
}

Drives FindDrives(const Sources& sources) {
    Drives drives;
    std::set<std::string> seen;
    std::set<std::string> mountedDevices;
    for (const Mount& mount : VisibleMounts(sources)) {
        const MountKind kind = KindOf(sources, mount);
        // Two shares of one server can have the same number.
        const std::string identity = mount.deviceNumber + " " + mount.source;
        if (kind == MountKind::None || !seen.insert(identity).second)
            continue;
        if (kind == MountKind::Memory)
            ++drives.memory;
        if (kind == MountKind::Fixed)
            drives.listed.push_back(DriveAt(sources, mount, DriveKind::Fixed));
        if (kind == MountKind::Network)
            drives.listed.push_back(DriveAt(sources, mount, DriveKind::Network));
        if (kind == MountKind::Optical) {
            mountedDevices.insert(DeviceName(sources, mount.source));
            drives.listed.push_back(DriveAt(sources, mount, DriveKind::Optical));
        }
    }
    AddOpticalWithoutDisc(sources, mountedDevices, drives);
    std::stable_sort(drives.listed.begin(), drives.listed.end(),
                     [](const Drive& one, const Drive& other) { return one.kind < other.kind; });
    if (drives.listed.size() > kMostRows)
        drives.listed.resize(kMostRows);
    drives.removable = CountRemovable(sources);
    return drives;
}

const char* DriveDescription(DriveKind kind) {
    switch (kind) {
        case DriveKind::Fixed:
            return "Fixed drive";
        case DriveKind::Optical:
            return "CD-ROM drive";
        case DriveKind::Network:
            return "Network drive";
    }
    return "";
}

} // namespace collector
