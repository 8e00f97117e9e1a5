// SPDX-License-Identifier: GPL-3.0-or-later
// What the small dialogs are built of, each control under its established name, and how their commands tell
// of a failure. Parents own what is made.
#pragma once

#include <functional>
#include <string>
#include <string_view>

class Prompts;
class QAbstractItemView;
class QLabel;
class QLineEdit;
class QPushButton;
class QString;
class QTabWidget;
class QWidget;

namespace Controls {

enum class Echo { Plain, Masked };

QPushButton* Button(QWidget* parent, const char* name, const char* caption);
/// A text box that selects its whole text when it gets the focus, as wide as `columns` letters at least.
QLineEdit* TextBox(QWidget* parent, const char* name, const char* accessibleName, int columns,
                   Echo echo = Echo::Plain);
/// A label whose access key, if any, leads to `buddy`.
QLabel* LabelFor(QWidget* buddy, const char* caption);
/// As LabelFor, broken into lines of about `columns` letters, with room for them all.
QLabel* WrappedLabelFor(QWidget* buddy, const char* caption, int columns);

/// Lets Ctrl+Tab and Ctrl+Shift+Tab turn the tabs from anywhere in their dialog. The control itself learns of
/// these keys only where the focus lets them pass, which lists of choices do not.
void TurnTabsByKeys(QTabWidget& tabs);

std::string TextOf(const QLineEdit& box);
QString Shown(std::string_view text);

/// Runs a command; a failure ends it with a box that tells its reason under `title` and its number.
void Guarded(Prompts& prompts, const std::function<void()>& command, const char* title = "Error#");

/// Takes a double click of another button than the left one for a press: it opens nothing.
void OnlyLeftDoubleClicks(QAbstractItemView& view);

/// Tells in an empty list why it is empty; to be called when its viewport is painted.
void PaintHint(QAbstractItemView& list, const QString& hint);

} // namespace Controls
