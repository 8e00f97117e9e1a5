// SPDX-License-Identifier: GPL-3.0-or-later
// What a command acts on, read from the key of the tree's selected node: "ALL", "ALL?CPU", "PC1?MAIN",
// "PC1?CPU", "MAIN". The commands read it differently, which is meant: see each of them.
#pragma once

#include <string>
#include <string_view>

namespace NodeKeys {

/// The key without any "?MAIN", so that of a machine's node its name is left.
std::string WithoutMain(std::string_view key);
/// The key up to, and without, its first "?".
std::string BeforeCategory(std::string_view key);
/// Whether `name` stands for all machines rather than for one.
bool IsAllMachines(std::string_view name);

} // namespace NodeKeys
