// SPDX-License-Identifier: GPL-3.0-or-later
// The questions as dialogs: native file dialogs where the desktop has them, else the toolkit's own. Texts
// are shown as plain text, since they hold names that a client PC has chosen; the pointer is the arrow while
// a question is open, also in the middle of long work.
#pragma once

#include "platform/prompts.h"

#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <string>

class QFileDialog;

class QtPrompts final : public Prompts {
public:
    /// The window that the dialogs belong to, unless the user works in another window or dialog: that of a
    /// minimised window would not be seen. Null, or gone, for none.
    void Owner(QWidget* owner) { mOwner = owner; }

    MsgBoxAnswer MsgBox(const std::string& text, int style, const std::string& title) override;
    std::string InputBox(const std::string& prompt, const std::string& title,
                         const std::string& initial) override;
    std::string OpenFile(const FileDialog& dialog) override;
    std::string SaveFile(const FileDialog& dialog) override;
    std::string BrowseForFolder(const std::string& title, const std::string& startFolder) override;
    void Beep() override;

private:
    QWidget* Parent();
    static void Prepare(QFileDialog& window, const FileDialog& dialog);

    QPointer<QWidget> mOwner;
    /// For the moment after a dialog, when no window has the keyboard yet.
    QPointer<QWidget> mLast;
};

/// Dialogs do not belong to `window`, which stands beside whatever the user works in.
void KeepDialogsOff(QWidget& window);

/// The toolkit's name filters for "name|pattern|name|pattern": patterns match in lower and in upper case,
/// "*.*" matches names without an extension too.
QStringList NameFilters(const std::string& filter);

/// `path` with "." and `extension` behind it where its file name has no extension of its own.
std::string WithDefaultExtension(const std::string& path, const std::string& extension);

/// `text` with invisible places to break in its long words, so that a box of it is never wider than a screen.
QString Breakable(const std::string& text);
