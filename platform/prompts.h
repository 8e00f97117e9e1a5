// SPDX-License-Identifier: GPL-3.0-or-later
// Every question that the system asks its user goes through this interface: message boxes, the input box,
// file and folder dialogs. The real one shows dialogs of the desktop; the one for tests answers from a queue.
#pragma once

#include <string>

/// Numbers of the platform's message box style; a style is the sum of one of each kind.
namespace MsgBoxStyle {
constexpr int kOKOnly = 0;
constexpr int kYesNo = 4;
constexpr int kCritical = 16;
constexpr int kQuestion = 32;
constexpr int kExclamation = 48;
constexpr int kInformation = 64;
constexpr int kDefaultButton2 = 256;
} // namespace MsgBoxStyle

enum class MsgBoxAnswer { OK, Yes, No };

/// A file dialog's texts: `filter` holds pairs "name|pattern" joined by "|"; `folder` is where it starts,
/// empty for wherever the desktop chooses.
struct FileDialog {
    std::string filter;
    std::string title;
    std::string defaultExtension;
    std::string folder;
};

class Prompts {
public:
    virtual ~Prompts() = default;

    /// Shows a box until it is answered. A Yes/No box that is closed by its frame answers No. A box without
    /// a title bears the program's name.
    virtual MsgBoxAnswer MsgBox(const std::string& text, int style, const std::string& title) = 0;

    /// The text typed, or "" on cancel.
    virtual std::string InputBox(const std::string& prompt, const std::string& title,
                                 const std::string& initial) = 0;

    /// The chosen path, or "" on cancel. A name that does not exist is accepted; a name without an extension
    /// gets the default one.
    virtual std::string OpenFile(const FileDialog& dialog) = 0;

    /// As OpenFile. Asks nothing of its own about a file that exists.
    virtual std::string SaveFile(const FileDialog& dialog) = 0;

    /// The chosen folder, or "" on cancel.
    virtual std::string BrowseForFolder(const std::string& title, const std::string& startFolder) = 0;

    /// The desktop's signal sound.
    virtual void Beep() = 0;
};
