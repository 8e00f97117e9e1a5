// SPDX-License-Identifier: GPL-3.0-or-later
// How work on many rows tells how far it has come, without knowing who shows it. What is told must stand as
// it was before the work: windows may repaint meanwhile.
#pragma once

#include <cstddef>
#include <functional>

/// Called now and then with how much of the work is done, and how much there is.
using Progress = std::function<void(std::size_t done, std::size_t all)>;
