// SPDX-License-Identifier: GPL-3.0-or-later
// Tells whether another copy of the console runs from the same program folder, and lets a second copy bring
// the first one to the front. The locks are the system's own, on the folder and on a file of the user's: they
// go with their process, however that ends, and no copy is ever locked out by a file left behind.
// A copy of another user's can be found, but not brought forward. Where the user has no private folder for
// the socket, nor can one of the same user's.
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

    /// For a later copy: asks the first to come to the front. Waits two seconds at most. False where it can't
    /// be reached.
    bool ActivateFirst();

private:
    /// Takes the folder's own lock, which keeps out other users' copies too: they would rebuild the same
    /// database. False where another copy has it; a folder that can't be locked keeps nobody out.
    bool TakeFolder(const std::string& programFolder);

    int mFolder = -1;
    int mLock = -1;
    bool mIsPrior = false;
    QString mSocketPath;
    std::unique_ptr<QLocalServer> mServer;
};
