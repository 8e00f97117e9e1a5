// SPDX-License-Identifier: GPL-3.0-or-later
// The file and folder dialogs as the commands call them, and two small services beside them. Who stores a
// chosen path removes its NUL characters first (WithoutNuls).
#pragma once

#include <string>

class Prompts;

namespace FileModule {

/// Each dialog returns the chosen path, or "" on cancel. `filter` holds pairs "name|pattern".
std::string ShowOpenDialog(Prompts& prompts, const std::string& filter, const std::string& title,
                           const std::string& defaultExtension, const std::string& folder = {});
std::string ShowSaveDialog(Prompts& prompts, const std::string& filter, const std::string& title,
                           const std::string& defaultExtension, const std::string& folder = {});
std::string BrowseForFolder(Prompts& prompts, const std::string& title, const std::string& startFolder);

/// Makes a file of no bytes in place of whatever file has this path; a link is replaced, never followed.
/// The collectors must be able to read it, so it gets the usual rights. Raises error 70, 75 or 76.
void CreateEmptyFile(const std::string& path);

/// Whether a window of exactly this name is loaded, shown or hidden.
bool FormIsLoaded(const std::string& name);

} // namespace FileModule
