// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Devices.h"
#include "tests/collector/FakeMachine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace collector {

namespace {

using testing::Contains;
using testing::HasSubstr;

constexpr const char* kNames =
    "# a comment\n8086  Intel Corporation\n\t153a  Ethernet Connection I217-LM\n\t\t103c 1998  subsystem\n"
    "\t0412  Graphics Controller\n1002  Advanced Micro Devices, Inc. [AMD/ATI]\n\t731f  Navi 10\n"
    "C 02  Network controller\n\t153a  not a device\n";

class DevicesTest : public testing::Test {
protected:
    void AddPci(const std::string& address, const std::string& vendor, const std::string& device,
                const std::string& classCode) const {
        const std::string folder = "/sys/devices/pci0000:00/" + address;
        machine.File(folder + "/vendor", vendor);
        machine.File(folder + "/device", device);
        machine.File(folder + "/class", classCode);
        machine.Link("/sys/bus/pci/devices/" + address, "../../../devices/pci0000:00/" + address);
    }

    std::vector<std::string> Records() const {
        std::vector<std::string> records;
        for (const Device& device : FindDevices(machine.Facts(), {adapters, input, board, processor}))
            records.push_back(DeviceRecord(device));
        return records;
    }

    FakeMachine machine;
    std::vector<NetworkAdapter> adapters;
    std::vector<InputDevice> input;
    SystemBoard board;
    std::string processor = "Some processor";
};

} // namespace

TEST_F(DevicesTest, ABareMachineHasItsBoard) {
    board.biosDate = "3-4-2019";
    EXPECT_THAT(Records(), testing::ElementsAre(
                               "Cat=System devices|Prob=00 00 00 00 |DevName=System Board|DvrDate=|IO=|IRQ=|"
                               "DMA=|MEM=|BName=;BDate=3-4-2019;BVer=;BUSType=;CPU=Some processor;MachType=;"
                               "Model=;"));
}

TEST_F(DevicesTest, AnAdapterIsListedOnceWithItsHardwareAndItsAddresses) {
    machine.File("/usr/share/misc/pci.ids", kNames);
    AddPci("0000:00:19.0", "0x8086", "0x153a", "0x020000");
    machine.File("/sys/devices/pci0000:00/0000:00:19.0/irq", "28\n");
    machine.File("/sys/devices/pci0000:00/0000:00:19.0/resource",
                 "0x00000000f7c00000 0x00000000f7c1ffff 0x0000000000040200\n"
                 "0x000000000000f080 0x000000000000f09f 0x0000000000040101\n"
                 "0x0000000000000000 0x0000000000000000 0x0000000000000000\n");
    NetworkAdapter adapter;
    adapter.interface = "eno1";
    adapter.folder = "/sys/devices/pci0000:00/0000:00:19.0";
    adapter.gateway = "10.0.0.1";
    adapter.addresses = {{"eno1", "10.0.0.7", "255.0.0.0"}, {"eno1", "10.0.0.8", "255.0.0.0"}};
    adapters = {adapter};
    const std::vector<std::string> records = Records();
    ASSERT_EQ(records.size(), 2U) << "the board and the adapter, which is no second device of the bus";
    EXPECT_EQ(
        records[1],
        "Cat=Network adapters|Prob=00 00 00 00 |DevName=Intel Ethernet Connection I217-LM (eno1)|DvrDate=|"
        "IO=F080-F09F|IRQ=28|DMA=|MEM=F7C00000-F7C1FFFF|"
        "PCount=1;PR0=TCP/IP;IP0=10.0.0.7;Mk0=255.0.0.0;Gw0=10.0.0.1;WS10=;WS20=;Client00=;Client01=;"
        "PR1=TCP/IP;IP1=10.0.0.8;Mk1=255.0.0.0;Gw1=10.0.0.1;WS11=;WS21=;Client10=;Client11=;");
}

TEST_F(DevicesTest, AnAdapterBehindAVirtualBusIsTheOneOfThePciBus) {
    AddPci("0000:00:03.0", "0x1af4", "0x1041", "0x020000");
    machine.File("/sys/devices/pci0000:00/0000:00:03.0/virtio1/vendor", "0x1af4");
    NetworkAdapter adapter;
    adapter.interface = "a-very-long-interface-name";
    adapter.folder = "/sys/devices/pci0000:00/0000:00:03.0/virtio1";
    adapters = {adapter};
    const std::vector<std::string> records = Records();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_THAT(records[1], HasSubstr("DevName=Network controller 1A (a-very-long-interface-name)|"))
        << "without a list of names the numbers, and the interface's name whole";
    EXPECT_THAT(records[1], HasSubstr("|PCount=;")) << "no protocol, not one protocol";
}

TEST_F(DevicesTest, OnlyDevicesThatAreUselessWithoutADriverHaveAProblem) {
    const struct {
        const char* why;
        const char* classCode;
        bool hasDriver;
        const char* record;
    } cases[] = {
        {"a sound card that nothing drives", "0x040300", false,
         "Cat=Sound, video and game controllers|Prob=1C 00 00 00 |"},
        {"a bridge needs no driver", "0x060000", false, "Cat=System devices|Prob=00 00 00 00 |"},
        {"an NVMe disk's controller is none for SCSI", "0x010802", true, "Cat=Hard disk controllers|"},
        {"a modem has the tag for its port", "0x070300", true, "|MEM=|AttTo=|"},
    };
    int slot = 0;
    for (const auto& c : cases) {
        const std::string address = "0000:00:0" + std::to_string(++slot) + ".0";
        AddPci(address, "0x1234", "0x5678", c.classCode);
        if (c.hasDriver)
            machine.Folder("/sys/devices/pci0000:00/" + address + "/driver");
        EXPECT_THAT(Records(), Contains(HasSubstr(c.record))) << c.why;
    }
}

TEST_F(DevicesTest, ADisplayAdapterTellsItsMemoryWhereItsDriverDoes) {
    machine.File("/usr/share/hwdata/pci.ids", kNames);
    AddPci("0000:00:02.0", "0x1002", "0x731f", "0x030000");
    machine.File("/sys/devices/pci0000:00/0000:00:02.0/mem_info_vram_total", "8573157376\n");
    std::string regions;
    for (int i = 0; i < 6; ++i)
        regions += "0x4000100000 0x400017ffff 0x0000000000040200\n";
    machine.File("/sys/devices/pci0000:00/0000:00:02.0/resource", regions);
    EXPECT_EQ(Records().back(),
              "Cat=Display adapters|Prob=00 00 00 00 |DevName=AMD/ATI Navi 10|DvrDate=|IO=|IRQ=|DMA=|"
              "MEM=4000100000-400017FFFF 4000100000-400017FFFF|VidMem=8176 MB;DACType=;")
        << "resources that do not fit are left out whole";
}

TEST_F(DevicesTest, UsbDevicesAreListedByWhatTheyAreAndOnlyOnce) {
    const auto add = [this](const std::string& name, const std::string& product,
                            const std::string& interfaceClass) {
        machine.File("/sys/bus/usb/devices/" + name + "/idVendor", "046d\n");
        machine.File("/sys/bus/usb/devices/" + name + "/idProduct", "0825\n");
        machine.File("/sys/bus/usb/devices/" + name + "/product", product);
        machine.File("/sys/bus/usb/devices/" + name + "/manufacturer", "Maker, Inc.");
        machine.File("/sys/bus/usb/devices/" + name + "/bDeviceClass", "ef\n");
        machine.File("/sys/bus/usb/devices/" + name + ":1.0/bInterfaceClass", interfaceClass);
    };
    add("1-1", "Webcam", "0e\n");
    add("1-2", "Keyboard", "03\n");
    add("1-3", "Stick", "08\n");
    add("1-4", "", "ff\n");
    const std::vector<std::string> records = Records();
    EXPECT_THAT(records, Contains(HasSubstr("Cat=Imaging devices|Prob=00 00 00 00 |DevName=Maker Webcam|")));
    EXPECT_THAT(records,
                Contains(HasSubstr("Cat=Other devices|Prob=00 00 00 00 |DevName=USB device 046D:0825|")));
    EXPECT_EQ(records.size(), 3U) << "keyboards and disks are found elsewhere";
}

TEST_F(DevicesTest, MonitorsDisksAndPortsAreFoundByWhatIsConnected) {
    std::string edid(128, '\0');
    edid.replace(72, 18, std::string("\0\0\0\xFC\0DELL U2412M\n ", 18));
    machine.File("/sys/class/drm/card0-DP-1/status", "connected\n");
    machine.File("/sys/class/drm/card0-DP-1/edid", edid);
    machine.File("/sys/class/drm/card0-DP-2/status", "connected\n");
    machine.File("/sys/class/drm/card0-DP-2/edid", edid.substr(0, 75));
    machine.File("/sys/class/drm/card0-DP-3/status", "disconnected\n");
    machine.File("/sys/block/sda/device/model", "WDC WD40    \n");
    machine.Folder("/sys/block/loop0");
    machine.File("/sys/class/tty/ttyS0/type", "4\n");
    machine.File("/sys/class/tty/ttyS0/port", "0x3F8\n");
    machine.File("/sys/class/tty/ttyS1/type", "0\n");
    const std::vector<std::string> records = Records();
    EXPECT_THAT(records, Contains(HasSubstr("Cat=Monitor|Prob=00 00 00 00 |DevName=DELL U2412M|")));
    EXPECT_THAT(records, Contains(HasSubstr("DevName=Monitor on card0-DP-2|"))) << "a description cut short";
    EXPECT_THAT(records, Contains(HasSubstr("Cat=Disk drives|Prob=00 00 00 00 |DevName=WDC WD40|")));
    EXPECT_THAT(records, Contains(HasSubstr("DevName=Serial port (ttyS0)|DvrDate=|IO=03F8-03FF|")));
    EXPECT_EQ(records.size(), 5U);
}

} // namespace collector
