// SPDX-License-Identifier: GPL-3.0-or-later
// The machine as a whole: its name, operating system, processor, memory, screens and system board.
// Facts that nothing on the machine tells are empty texts.
#pragma once

#include "collector/Sources.h"
#include "collector/Surroundings.h"

#include <string>

namespace collector {

/// The machine's name as the console keys by it, and the stem of its files: the host name's first
/// label in upper case, at most 20 characters out of A to Z, 0 to 9, "-" and "_". Never "ALL" or
/// "MAIN", which are branches of the console's tree.
std::string MachineName(const Sources& sources);

struct OperatingSystem {
    std::string version;
    std::string build; // the kernel's release
    std::string boot;
    bool isDebugKernel = false;
    std::string name;
    std::string identifier;
    std::string variant;
    std::string pointRelease;
};
OperatingSystem ReadOperatingSystem(const Sources& sources);

struct Processor {
    std::string name;
    std::string vendor;
    std::string family; // "x86 Family 6 Model 60 Stepping 3"
    std::string megahertz;
    std::string fastest; // the highest speed, with its unit
    bool hasFloatingPoint = false;
    bool hasMMX = false;
    std::size_t present = 0;
    std::size_t online = 0;
};
Processor ReadProcessor(const Sources& sources);

/// In kilobytes, as decimal texts.
struct Memory {
    std::string total, free, swapTotal, swapFree, allTotal, allFree;
};
Memory ReadMemory(const Sources& sources);

struct Multimedia {
    std::string resolution; // of the first screen, "1920x1080"
    std::string depth;
    std::size_t screens = 0;
    std::size_t waveDevices = 0;
    std::size_t midiDevices = 0;
    std::size_t joystickDrivers = 0;
    std::size_t joysticks = 0;
};
Multimedia ReadMultimedia(const Sources& sources);

struct SystemBoard {
    std::string biosName, biosDate, biosVersion; // the date as m-d-yyyy
    std::string bus, machineType, model;
};
SystemBoard ReadSystemBoard(const Sources& sources);

} // namespace collector
