// SPDX-License-Identifier: GPL-3.0-or-later
// A file that is large enough to be waited for is read with moving progress on the main window.
#pragma once

#include <functional>
#include <string>
#include <string_view>

class MainForm;

/// Hands the bytes of the file `from` to `write`, block by block. A link is not followed. Raises what the
/// disk or `write` raises.
void ShownCopy(MainForm& form, const std::string& from, const std::function<void(std::string_view)>& write);
