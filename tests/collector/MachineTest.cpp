// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/InputDevices.h"
#include "collector/Machine.h"
#include "tests/collector/FakeMachine.h"

#include <gtest/gtest.h>

#include <vector>

namespace collector {

TEST(MachineName, IsFitForAFileAndAKey) {
    const struct {
        const char* why;
        const char* host;
        const char* name;
    } cases[] = {
        {"the first label, as the network knows machines", "pc7.office.example\n", "PC7"},
        {"the column holds 20 characters, the last of which keep long names apart",
         "a-very-long-host-name-of-a-server", "A-VERY-LONG-HO-4B653"},
        {"an apostrophe would break the console's queries", "o'brien", "O-BRIEN"},
        {"separators of records, keys and folders", "a|b;c=d[e]f?g/h", "A-B-C-D-E-F-G-H"},
        {"no name at all", "", "LOCALHOST"},
        {"a branch of the console's tree", "all", "ALL1"},
        {"bytes beyond ASCII", "caf\xC3\xA9", "CAF--"},
    };
    for (const auto& c : cases) {
        const FakeMachine machine;
        machine.File("/proc/sys/kernel/hostname", c.host);
        EXPECT_EQ(MachineName(machine.Facts()), c.name) << c.why;
    }
}

TEST(OperatingSystem, IsReadFromItsReleaseFile) {
    const FakeMachine machine;
    machine.File("/etc/os-release",
                 "# comment with = in it\n\nPRETTY_NAME=\"Debian \\\"GNU\\\" 12\"\nVERSION_ID=\"12\"\n"
                 "ID=debian\nVERSION=\"12 (bookworm)\"\nBROKEN\n");
    machine.File("/etc/debian_version", "12.8\n");
    machine.File("/proc/sys/kernel/osrelease", "6.1.0-27-amd64\n");
    machine.File("/proc/cmdline", "BOOT_IMAGE=/vmlinuz root=/dev/sda1 single\n");
    const OperatingSystem system = ReadOperatingSystem(machine.Facts());
    EXPECT_EQ(system.name, "Debian \"GNU\" 12");
    EXPECT_EQ(system.version, "12");
    EXPECT_EQ(system.pointRelease, "12.8");
    EXPECT_EQ(system.build, "6.1.0-27-amd64");
    EXPECT_EQ(system.boot, "Rescue boot");
    EXPECT_FALSE(system.isDebugKernel);
}

TEST(Processor, IsTheFirstOneAndAllAreCounted) {
    const FakeMachine machine;
    machine.File("/proc/cpuinfo",
                 "processor\t: 0\nvendor_id\t: GenuineIntel\ncpu family\t: 6\nmodel\t\t: 60\n"
                 "model name\t: Intel(R) Core(TM) i5\nstepping\t: 3\ncpu MHz\t\t: 800.021\n"
                 "flags\t\t: fpu sse\n\nprocessor\t: 1\nmodel name\t: another\n");
    machine.File("/sys/devices/system/cpu/present", "0-3,8\n");
    machine.File("/sys/devices/system/cpu/online", "0-1\n");
    machine.File("/sys/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq", "3400000\n");
    const Processor processor = ReadProcessor(machine.Facts());
    EXPECT_EQ(processor.name, "Intel(R) Core(TM) i5");
    EXPECT_EQ(processor.family, "x86 Family 6 Model 60 Stepping 3");
    EXPECT_EQ(processor.megahertz, "800");
    EXPECT_EQ(processor.fastest, "3400 MHz");
    EXPECT_TRUE(processor.hasFloatingPoint);
    EXPECT_FALSE(processor.hasMMX);
    EXPECT_EQ(processor.present, 5U);
    EXPECT_EQ(processor.online, 2U);
}

TEST(Memory, IsInKilobytesAndUnknownWhereTheKernelIsSilent) {
    const FakeMachine machine;
    machine.File("/proc/meminfo",
                 "MemTotal: 8000 kB\nMemFree: 100 kB\nMemAvailable: 5000 kB\nSwapTotal: 2000 kB\n");
    const Memory memory = ReadMemory(machine.Facts());
    EXPECT_EQ(memory.total, "8000");
    EXPECT_EQ(memory.free, "5000") << "caches give way, so they count as free";
    EXPECT_EQ(memory.allTotal, "10000");
    EXPECT_EQ(memory.swapFree, "");
    EXPECT_EQ(memory.allFree, "") << "half a sum is no sum";
}

TEST(SystemBoard, LeavesOutWhatAMakerNeverFilledIn) {
    const struct {
        const char* why;
        const char* date;
        const char* read;
    } dates[] = {
        {"month and day without leading zeros", "03/04/2019", "3-4-2019"},
        {"no date", "Default string", ""},
    };
    for (const auto& c : dates) {
        const FakeMachine machine;
        machine.File("/sys/class/dmi/id/bios_date", c.date);
        EXPECT_EQ(ReadSystemBoard(machine.Facts()).biosDate, c.read) << c.why;
    }
    const FakeMachine machine;
    machine.File("/sys/class/dmi/id/sys_vendor", "Dell Inc.\n");
    machine.File("/sys/class/dmi/id/product_name", "OptiPlex 7010\n");
    machine.File("/sys/class/dmi/id/bios_version", "To Be Filled By O.E.M.\n");
    const SystemBoard board = ReadSystemBoard(machine.Facts());
    EXPECT_EQ(board.model, "Dell Inc. OptiPlex 7010");
    EXPECT_EQ(board.biosVersion, "");
}

TEST(InputDevices, AreJudgedByWhatTheyCanSend) {
    const FakeMachine machine;
    machine.File("/proc/bus/input/devices",
                 "I: Bus=0019\nN: Name=\"Power Button\"\nH: Handlers=kbd event0\nB: KEY=10000000000000 0\n\n"
                 "N: Name=\"AT Translated Set 2 keyboard\"\nH: Handlers=sysrq kbd leds event1\n"
                 "B: KEY=402000000 3803078f800d001 feffffdfffefffff fffffffffffffffe\n\n"
                 "N: Name=\"Logitech USB Mouse\"\nH: Handlers=mouse0 event2\n"
                 "B: KEY=70000 0 0 0 0\nB: REL=103\n");
    const std::vector<InputDevice> devices = InputDevices(machine.Facts());
    ASSERT_EQ(devices.size(), 2U) << "a power button has no letters";
    EXPECT_EQ(devices[0].name, "AT Translated Set 2 keyboard");
    EXPECT_TRUE(devices[0].isKeyboard);
    EXPECT_EQ(devices[0].functionKeys, 12U) << "not the three more that its driver claims";
    EXPECT_TRUE(devices[1].isMouse);
    EXPECT_EQ(devices[1].buttons, 3U);
    EXPECT_TRUE(devices[1].hasWheel);
}

} // namespace collector
