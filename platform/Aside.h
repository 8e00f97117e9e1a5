// SPDX-License-Identifier: GPL-3.0-or-later
// For calls that keep their caller until the disk or the database engine is done: they run on a thread of
// their own, so that the interface thread can let windows paint meanwhile. The caller still waits for the
// end, so the order of its steps and its failures are as without.
#pragma once

#include <functional>

/// Runs `call` aside and calls `wait`, where there is one, about 50 times a second until it is done. Raises
/// what `call` raises. Nothing that `wait` lets run may touch what `call` works on. Where the system gives no
/// thread, or another call is aside already, `call` runs on the caller's.
void RunAside(const std::function<void()>& call, const std::function<void()>& wait);

/// Whether a call is aside: a timer's handler must leave the database alone then.
bool RunsAside();
