// SPDX-License-Identifier: GPL-3.0-or-later
// Tells whether another copy of this user's console runs from the same program folder, and lets a second
// copy bring the first one to the front. The lock is the system's own on an open file: it goes with its
// process, however that ends, and no copy is ever locked out by a file left behind.
// Both files lie in a folder of the user's alone. Where there is none, each copy counts as the first.
#pragma once

#include <QLocalServer>
#include <QString>

#include <functional>
#include <memory>
#include <string>

class SingleInstance {
public:
    /// Takes the lock of `programFolder`, or finds it taken.
    explicit SingleInstance(const std::string& programFolder);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    bool IsPrior() const { return mIsPrior; }

    /// For the first copy: calls `raise` whenever a later copy asks for it. It is called from events that
    /// are let through, so also in a wait that holds back user input.
    void Listen(std::function<void()> raise);

    /// For a later copy: asks the first to come to the front. Waits two seconds at most; errors are ignored,
    /// since this copy ends in any case.
    void ActivateFirst();

private:
    int mLock = -1;
    bool mIsPrior = false;
    QString mSocketPath;
    std::unique_ptr<QLocalServer> mServer;
};
