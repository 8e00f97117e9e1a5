// SPDX-License-Identifier: GPL-3.0-or-later
// Writes this machine's inventory into the folder INF beside the program. Needs no privileges and
// takes no arguments; exit status 1, with a line on the standard error, when it could not write.
#include "collector/Inventory.h"
#include "collector/InventoryFile.h"
#include "collector/Machine.h"
#include "collector/Startup.h"

#include <unistd.h>

#include <cstdio>
#include <ctime>
#include <exception>
#include <filesystem>
#include <thread>

namespace {

void CollectInto(const std::filesystem::path& folder) {
    using namespace collector;
    const StartupOptions options = ReadStartupOptions(folder);
    if (options.delay.count() > 0)
        std::this_thread::sleep_for(TimeToWait(options.delay, SessionStart(UserName()), std::time(nullptr)));
    if (options.isAudible && ::isatty(STDERR_FILENO) != 0)
        (void)std::fputc('\a', stderr);

    // The console takes a folder of the name in another case, too.
    std::filesystem::path inventory = FileIgnoringCase(folder, "INF");
    if (!std::filesystem::is_directory(inventory))
        inventory = folder / "INF";
    const Sources sources;
    const std::string machine = MachineName(sources);
    WriteInventory(inventory, machine, InventoryText(machine, sources, CurrentSurroundings()));
}

} // namespace

int main() {
    try {
        CollectInto(std::filesystem::read_symlink("/proc/self/exe").parent_path());
        return 0;
    } catch (const std::exception& failure) {
        (void)std::fprintf(stderr, "Movanta: %s\n", failure.what());
        return 1;
    }
}
