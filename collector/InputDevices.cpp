// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/InputDevices.h"

#include "collector/Text.h"

#include <cstdint>

namespace collector {

namespace {

// Numbers of linux/input-event-codes.h.
constexpr std::size_t kKeyA = 30;
constexpr std::size_t kKeyZ = 44;
constexpr std::size_t kFirstButton = 0x110;
constexpr std::size_t kLastButton = 0x117;
constexpr std::size_t kWheel = 8;

// A set of codes as the kernel prints it: hexadecimal words of the machine's size, the highest first.
class Codes {
public:
    explicit Codes(std::string_view text) : mWords(Words(text)) {}

    bool Has(std::size_t code) const {
        constexpr std::size_t bits = sizeof(unsigned long) * 8;
        if (code / bits >= mWords.size())
            return false;
        const auto word = WholeNumber(mWords[mWords.size() - 1 - code / bits], 16);
        return ((word.value_or(0) >> (code % bits)) & 1U) != 0;
    }

    std::size_t Count(std::size_t first, std::size_t last) const {
        std::size_t count = 0;
        for (std::size_t code = first; code <= last; ++code)
            count += Has(code) ? 1 : 0;
        return count;
    }

private:
    std::vector<std::string_view> mWords;
};

// F1 to F10, and F11 and F12. Drivers claim a few beyond for every keyboard.
std::size_t CountFunctionKeys(const Codes& keys) {
    return keys.Count(59, 68) + keys.Count(87, 88);
}

bool HasHandler(std::string_view handlers, std::string_view start) {
    for (const std::string_view handler : Words(handlers))
        if (handler.starts_with(start))
            return true;
    return false;
}

std::string Unquoted(std::string_view text) {
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"')
        text = text.substr(1, text.size() - 2);
    return std::string(Trimmed(text));
}

struct Paragraph {
    std::string_view name, handlers, keys, axes;
};

InputDevice Judge(const Paragraph& paragraph) {
    const Codes keys(paragraph.keys);
    InputDevice device;
    device.name = Unquoted(paragraph.name);
    device.isKeyboard = HasHandler(paragraph.handlers, "kbd") && keys.Has(kKeyA) && keys.Has(kKeyZ);
    device.isMouse = HasHandler(paragraph.handlers, "mouse");
    device.functionKeys = CountFunctionKeys(keys);
    device.buttons = keys.Count(kFirstButton, kLastButton);
    device.hasWheel = Codes(paragraph.axes).Has(kWheel);
    return device;
}

} // namespace

std::vector<InputDevice> InputDevices(const Sources& sources) {
    std::vector<InputDevice> devices;
    const std::string text = sources.Read("/proc/bus/input/devices");
    Paragraph paragraph;
    const auto finish = [&] {
        const InputDevice device = Judge(paragraph);
        if (device.isKeyboard || device.isMouse)
            devices.push_back(device);
        paragraph = {};
    };
    for (const std::string_view line : Split(text, '\n')) {
        if (line.empty())
            finish();
        else if (line.starts_with("N: Name="))
            paragraph.name = Behind(line, '=');
        else if (line.starts_with("H: Handlers="))
            paragraph.handlers = Behind(line, '=');
        else if (line.starts_with("B: KEY="))
            paragraph.keys = Behind(line, '=');
        else if (line.starts_with("B: REL="))
            paragraph.axes = Behind(line, '=');
    }
    finish();
    return devices;
}

} // namespace collector
