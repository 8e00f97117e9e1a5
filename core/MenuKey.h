// SPDX-License-Identifier: GPL-3.0-or-later
// F10 opens the first menu of a window, whatever the access keys of its menus are.
#pragma once

class QMainWindow;

void OpenMenuByKey(QMainWindow& window);
