// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/HardwareNames.h"

#include "collector/Text.h"

#include <array>

namespace collector {

namespace {
std::uint32_t DeviceKey(std::uint16_t vendor, std::uint16_t device) {
    return (std::uint32_t{vendor} << 16U) | device;
}
} // namespace

HardwareNames::HardwareNames(std::string_view list) {
    for (const std::string_view line : Split(list, '\n'))
        Read(line);
}

void HardwareNames::Read(std::string_view line) {
    if (line.empty() || line.front() == '#' || line.starts_with("\t\t"))
        return;
    const bool isDevice = line.front() == '\t';
    if (isDevice)
        line.remove_prefix(1);
    const auto number = line.find(' ') == 4 ? WholeNumber(line.substr(0, 4), 16) : std::nullopt;
    if (!isDevice) {
        mIsInVendor = number.has_value();
        mVendor = static_cast<std::uint16_t>(number.value_or(0));
    }
    if (!number || !mIsInVendor)
        return;
    const std::string name(Trimmed(line.substr(4)));
    if (isDevice)
        mDevices.emplace(DeviceKey(mVendor, static_cast<std::uint16_t>(*number)), name);
    else
        mVendors.emplace(mVendor, name);
}

std::string HardwareNames::Name(std::uint16_t vendor, std::uint16_t device) const {
    const auto found = mDevices.find(DeviceKey(vendor, device));
    if (found == mDevices.end())
        return {};
    return ShortMaker(mVendors.at(vendor)) + " " + found->second;
}

std::string ShortMaker(std::string_view maker) {
    constexpr std::array<std::string_view, 8> endings = {
        " Corporation", " Corp.", ", Inc.", ", Inc", " Inc.", " Co., Ltd.", ", Ltd.", " Ltd.",
    };
    const auto open = maker.find('[');
    const auto close = maker.find(']', open);
    if (open != std::string_view::npos && close != std::string_view::npos && close > open + 1)
        return std::string(maker.substr(open + 1, close - open - 1));
    for (const std::string_view ending : endings)
        if (maker.ends_with(ending))
            return std::string(maker.substr(0, maker.size() - ending.size()));
    return std::string(maker);
}

} // namespace collector
