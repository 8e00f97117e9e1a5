// SPDX-License-Identifier: GPL-3.0-or-later
// Text boxes of the dialogs select their whole text when they get the focus, so that typing replaces it.
#pragma once

class QLineEdit;

void SelectAllText(QLineEdit& box);

/// Selects the whole text whenever `box` gets the focus, by keyboard, by mouse or by the program. A box that
/// had it before its pop-up menu or another window took it keeps what the user has selected.
void SelectAllOnFocus(QLineEdit& box);
