// SPDX-License-Identifier: GPL-3.0-or-later
// What is mounted, and what leads out of the machine.
#include "collector/Drives.h"
#include "collector/Network.h"
#include "tests/collector/FakeMachine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace collector {

TEST(Drives, AreCountedByWhatIsMounted) {
    const struct {
        const char* why;
        const char* mounts;
        std::size_t fixed, optical, network, memory;
    } cases[] = {
        {"what the kernel mounts for itself is no drive",
         "20 1 0:19 / /proc rw - proc proc rw\n21 1 0:20 / /sys rw shared:7 - sysfs sysfs rw\n"
         "22 1 0:21 / /run rw - tmpfs tmpfs rw\n23 1 0:22 / /dev/shm rw - tmpfs tmpfs rw\n",
         0, 0, 0, 0},
        {"a folder shown in a second place, and a device mounted twice, are one drive",
         "1 0 8:1 / / rw - ext4 /dev/sda1 rw\n2 1 8:1 /srv /mnt/a rw - ext4 /dev/sda1 rw\n"
         "3 1 8:1 / /mnt/b rw - ext4 /dev/sda1 rw\n",
         1, 0, 0, 0},
        {"subvolumes share one device",
         "1 0 0:30 /@ / rw - btrfs /dev/sda2 rw\n2 1 0:30 /@home /home rw - btrfs /dev/sda2 rw\n", 1, 0, 0,
         0},
        {"a container: its root is a drive, the files lent by the host are none",
         "1 0 0:50 / / rw - overlay overlay rw\n"
         "2 1 8:1 /var/lib/c/hosts /etc/hosts rw - ext4 /dev/sda1 rw\n"
         "3 1 0:51 / /mnt/layer rw - overlay overlay rw\n",
         1, 0, 0, 0},
        {"shares, of which two come from one server; a lent folder as root is the machine's disk",
         "1 0 0:60 / / rw - virtiofs root rw\n2 1 0:61 / /mnt/a rw - nfs4 nas:/a rw\n"
         "3 1 0:61 / /mnt/b rw - nfs4 nas:/b rw\n4 1 0:62 / /mnt/c rw - cifs //nas/c rw\n",
         1, 0, 3, 0},
        {"the desktop's own bridges are no shares",
         "1 0 0:70 / /run/user/1000/gvfs rw - fuse.gvfsd-fuse gvfsd-fuse rw\n"
         "2 1 0:71 / /home/u/doc rw - fuse.portal portal rw\n",
         0, 0, 0, 0},
        {"a disc, an application image, a RAM disk",
         "1 0 11:0 / /media/cd ro - iso9660 /dev/sr0 ro\n2 1 7:0 / /snap/x ro - squashfs /dev/loop0 ro\n"
         "3 1 0:80 / /mnt/ram rw - tmpfs tmpfs rw\n",
         0, 1, 0, 1},
        {"a later mount hides an earlier one on the same point",
         "1 0 0:90 / /mnt/a rw - autofs systemd-1 rw\n2 1 8:1 / /mnt/b rw - ext4 /dev/sda1 rw\n"
         "3 2 0:91 / /mnt/b rw - nfs nas:/b rw\n",
         0, 0, 1, 0},
        {"lines that are cut short or no lines of the list", "1 0 8:1 / /\n- - -\n\n1 0 8:1 / / rw -\n", 0, 0,
         0, 0}};
    for (const auto& c : cases) {
        const FakeMachine machine;
        machine.File("/proc/self/mountinfo", c.mounts);
        const Drives drives = FindDrives(machine.Facts());
        EXPECT_EQ(drives.Count(DriveKind::Fixed), c.fixed) << c.why;
        EXPECT_EQ(drives.Count(DriveKind::Optical), c.optical) << c.why;
        EXPECT_EQ(drives.Count(DriveKind::Network), c.network) << c.why;
        EXPECT_EQ(drives.memory, c.memory) << c.why;
        EXPECT_EQ(drives.listed.size(), c.fixed + c.optical + c.network) << c.why;
    }
}

TEST(Drives, TellWhatADiskIs) {
    const FakeMachine machine;
    machine.File("/proc/self/mountinfo",
                 "1 0 8:1 / / rw - ext4 /dev/sda1 rw\n"
                 "2 1 0:61 / /mnt/my\\040share rw - cifs //nas/c rw,vers=3,username=anna,uid=0\n");
    machine.File("/dev/sda1", "");
    machine.Link("/dev/disk/by-label/System\\x20disk", "../../sda1");
    machine.Link("/dev/disk/by-uuid/1A2B-3C4D", "../../sda1");
    const Drives drives = FindDrives(machine.Facts());
    ASSERT_EQ(drives.listed.size(), 2U);
    const Drive& disk = drives.listed[0];
    EXPECT_EQ(disk.label, "System disk");
    EXPECT_EQ(disk.serial, "1A2B-3C4D");
    EXPECT_EQ(disk.mapping, "");
    ASSERT_TRUE(disk.space);
    EXPECT_GE(disk.space->size, disk.space->free);
    EXPECT_GT(disk.space->size, 1U << 20U) << "bytes, not blocks";
    const Drive& share = drives.listed[1];
    EXPECT_EQ(share.root, "/mnt/my share");
    EXPECT_EQ(share.mapping, "//nas/c");
    EXPECT_EQ(share.user, "anna");
    EXPECT_FALSE(share.space) << "there is no such folder to ask";
}

TEST(Drives, CountAStickOnceAndListOpticalDrivesWithoutDisc) {
    const FakeMachine machine;
    machine.File("/proc/self/mountinfo",
                 "1 0 8:1 / / rw - ext4 /dev/sda1 rw\n2 1 8:17 / /media/stick rw - vfat /dev/sdb1 rw\n");
    machine.File("/sys/devices/usb/block/sdb/removable", "1\n");
    machine.File("/sys/devices/usb/block/sdb/sdb1/partition", "1\n");
    machine.Link("/sys/class/block/sdb", "../../devices/usb/block/sdb");
    machine.Link("/sys/class/block/sdb1", "../../devices/usb/block/sdb/sdb1");
    machine.Link("/sys/block/sdb", "../devices/usb/block/sdb");
    machine.File("/proc/sys/dev/cdrom/info",
                 "CD-ROM information\n\ndrive name:\t\tsr1\tsr0\ndrive speed:\t24\t24\n");
    const Drives drives = FindDrives(machine.Facts());
    EXPECT_EQ(drives.removable, 1U);
    EXPECT_EQ(drives.Count(DriveKind::Fixed), 1U);
    ASSERT_EQ(drives.Count(DriveKind::Optical), 2U);
    EXPECT_EQ(drives.listed[1].root, "/dev/sr0");
}

namespace {

constexpr const char* kRouteHeader =
    "Iface Destination Gateway Flags RefCnt Use Metric Mask MTU Window IRTT\n";

void AddInterface(const FakeMachine& machine, const std::string& name, const std::string& address,
                  bool isHardware) {
    machine.File("/sys/class/net/" + name + "/address", address + "\n");
    if (isHardware) {
        machine.Folder("/sys/devices/" + name);
        machine.Link("/sys/class/net/" + name + "/device", "../../../devices/" + name);
    }
}

std::vector<std::string> Names(const std::vector<NetworkAdapter>& adapters) {
    std::vector<std::string> names;
    names.reserve(adapters.size());
    for (const NetworkAdapter& adapter : adapters)
        names.push_back(adapter.interface);
    return names;
}

} // namespace

TEST(NetworkAdapters, PutTheWayOutFirstAndLeaveTheMachinesOwnBridgesOut) {
    const FakeMachine machine;
    AddInterface(machine, "lo", "00:00:00:00:00:00", false);
    AddInterface(machine, "docker0", "02:42:00:00:00:01", false);
    AddInterface(machine, "enp3s0", "aa:bb:cc:dd:ee:01", true);
    AddInterface(machine, "wlp2s0", "aa:bb:cc:dd:ee:02", true);
    machine.File("/proc/net/route", std::string(kRouteHeader) +
                                        "enp3s0 00000000 0100A8C0 0003 0 0 600 00000000 0 0 0\n"
                                        "wlp2s0 00000000 FE01A8C0 0003 0 0 100 00000000 0 0 0\n"
                                        "wlp2s0 0001A8C0 00000000 0001 0 0 100 00FFFFFF 0 0 0\n");
    Surroundings surroundings;
    surroundings.addresses = {{"lo", "127.0.0.1", "255.0.0.0"},
                              {"docker0", "172.17.0.1", "255.255.0.0"},
                              {"wlp2s0", "192.168.1.7", "255.255.255.0"},
                              {"wlp2s0:1", "192.168.1.8", "255.255.255.0"}};
    const std::vector<NetworkAdapter> adapters = NetworkAdapters(machine.Facts(), surroundings);
    ASSERT_THAT(Names(adapters), testing::ElementsAre("wlp2s0", "enp3s0")) << "the lower metric leads";
    EXPECT_EQ(adapters[0].hardwareAddress, "AABBCCDDEE02");
    EXPECT_EQ(adapters[0].gateway, "192.168.1.254");
    EXPECT_EQ(adapters[0].addresses.size(), 2U) << "an alias belongs to its adapter";
    EXPECT_TRUE(adapters[1].addresses.empty());
}

TEST(NetworkAdapters, KeepABridgeThatTheTrafficGoesThroughAndAContainersOnlyInterface) {
    const FakeMachine server;
    AddInterface(server, "br0", "aa:bb:cc:dd:ee:03", false);
    AddInterface(server, "eno1", "aa:bb:cc:dd:ee:03", true);
    server.File("/proc/net/route",
                std::string(kRouteHeader) + "br0 00000000 0100000A 0003 0 0 0 00000000 0 0 0\n");
    EXPECT_THAT(Names(NetworkAdapters(server.Facts(), {})), testing::ElementsAre("br0", "eno1"));

    const FakeMachine container;
    AddInterface(container, "eth0", "02:42:ac:11:00:02", false);
    AddInterface(container, "tunl0", "00:00:00:00", false);
    Surroundings surroundings;
    surroundings.addresses = {{"eth0", "172.17.0.2", "255.255.0.0"}};
    EXPECT_THAT(Names(NetworkAdapters(container.Facts(), surroundings)), testing::ElementsAre("eth0"));
}

} // namespace collector
