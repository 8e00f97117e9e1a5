// SPDX-License-Identifier: GPL-3.0-or-later
// Names of PCI and USB devices by their numbers, from the lists that distributions carry (pci.ids,
// usb.ids). A machine without a list has no names; the callers then write the numbers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace collector {

class HardwareNames {
public:
    /// Reads a list: a vendor's line begins with four hexadecimal digits, its devices follow behind a
    /// tab. The part behind the vendors (classes and the like) is left out.
    explicit HardwareNames(std::string_view list);

    /// The maker's everyday name and the device's, "" where the device is not in the list.
    std::string Name(std::uint16_t vendor, std::uint16_t device) const;

private:
    void Read(std::string_view line);

    std::unordered_map<std::uint16_t, std::string> mVendors;
    std::unordered_map<std::uint32_t, std::string> mDevices;
    std::uint16_t mVendor = 0;
    bool mIsInVendor = false;
};

/// A maker's everyday name: "AMD/ATI" of "Advanced Micro Devices, Inc. [AMD/ATI]", "Intel" of
/// "Intel Corporation".
std::string ShortMaker(std::string_view maker);

} // namespace collector
