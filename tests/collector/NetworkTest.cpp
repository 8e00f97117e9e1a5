// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Network.h"
#include "tests/collector/FakeMachine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace collector {

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
