// SPDX-License-Identifier: GPL-3.0-or-later
// Packs files into plain ZIP archives and unpacks such archives, with moving progress on the main window. A
// failure is told in a box, and then counts as the result False.
// Archives to be unpacked are not trusted: nothing leaves the target folder, only plain data is written, and
// an entry that would fill the disk, or swells beyond belief, is a failure.
#pragma once

#include <string>

class MainForm;
class Prompts;

namespace VBZip {

/// Where progress is shown and questions are asked.
struct Window {
    MainForm& form;
    Prompts& prompts;
};

/// Packs the file `source`, or of a source such as "folder/*.ORG" every file with that extension, whatever
/// the case of its letters. The archive is its owner's alone, and takes the place of an older one only when
/// it is whole. `entryName` is the name of a single file in the archive, its own one where it is empty.
bool ZipFile(const Window& window, const std::string& source, const std::string& archive,
             const std::string& entryName = {});

/// Unpacks all files of `archive` into `folder`, by their names without directories. Folders, links and
/// devices are left out, and so is what has no name. Asks before one entry overwrites another.
bool UnzipFile(const Window& window, const std::string& archive, const std::string& folder);

} // namespace VBZip
