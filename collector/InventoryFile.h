// SPDX-License-Identifier: GPL-3.0-or-later
// Puts a machine's inventory into the folder that the console imports from. The console reads without
// locks, so a file appears under its name only when it is whole. The folder may be shared by many
// machines and lie on a file system that ignores case: names that differ in case alone are one name.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace collector {

/// The entry of `folder` named `name`: the exact one, else one in another case, else `name` itself.
std::filesystem::path FileIgnoringCase(const std::filesystem::path& folder, const std::string& name);

/// Writes `<machine>.INF` into `folder`, which is made when missing, and `<machine>.ORG` if there is
/// none yet. Throws std::system_error whose text names the file or folder.
void WriteInventory(const std::filesystem::path& folder, const std::string& machine, std::string_view text);

} // namespace collector
