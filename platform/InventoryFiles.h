// SPDX-License-Identifier: GPL-3.0-or-later
// What holds for every file of the inventory folder that is named after a machine. Client PCs write the names
// and can write into the folder: neither a name nor a link of theirs leads out of it.
#pragma once

#include <string>
#include <string_view>

/// Whether a file in the inventory folder can be named after the machine. Hidden files are none of its own.
bool IsFileName(std::string_view machine);

/// Puts the bytes of `source` in place of `target`, which is whole at any moment, old or new. A link at
/// `target` is replaced itself; a source that is a link, or no file, raises an error.
void CopyInventoryFile(const std::string& source, const std::string& target);
