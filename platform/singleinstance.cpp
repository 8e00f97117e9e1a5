// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/singleinstance.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QLocalSocket>
#include <QThread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <utility>

namespace {

// Milliseconds.
constexpr int kLongestWait = 2000;
constexpr int kPause = 50;

/// Whether `folder` is a folder of this user's that nobody else can enter: in a shared temporary folder
/// anyone can have made it first.
bool IsPrivateFolder(const std::string& folder) {
    struct stat state {};
    return lstat(folder.c_str(), &state) == 0 && S_ISDIR(state.st_mode) && state.st_uid == geteuid() &&
           (state.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

/// The session's folder of this user, or one below the temporary folder; "" where neither is private.
std::string RuntimeFolder() {
    const char* const session = std::getenv("XDG_RUNTIME_DIR"); // NOLINT(concurrency-mt-unsafe)
    if (session != nullptr && session[0] == '/' && IsPrivateFolder(session))
        return session;
    const std::string own = QDir::tempPath().toStdString() + "/velmora-" + std::to_string(geteuid());
    if (mkdir(own.c_str(), S_IRWXU) != 0 && errno != EEXIST)
        return {};
    return IsPrivateFolder(own) ? own : std::string();
}

/// A name that is the same for every way of writing the folder's path, and short: the system allows a
/// socket's path about a hundred bytes.
std::string NameFor(const std::string& programFolder) {
    const QString canonical = QDir(QString::fromStdString(programFolder)).canonicalPath();
    const QByteArray hash = QCryptographicHash::hash(
        canonical.isEmpty() ? QByteArray::fromStdString(programFolder) : canonical.toUtf8(),
        QCryptographicHash::Sha256);
    return "velmora-" + hash.toHex().left(16).toStdString();
}

} // namespace

SingleInstance::SingleInstance(const std::string& programFolder) {
    mIsPrior = !TakeFolder(programFolder);
    const std::string folder = RuntimeFolder();
    if (folder.empty())
        return;
    const std::string path = folder + "/" + NameFor(programFolder);
    mSocketPath = QString::fromStdString(path + ".socket");
    mLock = open((path + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    if (mLock >= 0 && flock(mLock, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        mIsPrior = true;
}

bool SingleInstance::TakeFolder(const std::string& programFolder) {
    mFolder = open(programFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    return mFolder < 0 || flock(mFolder, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

SingleInstance::~SingleInstance() {
    mServer.reset();
    for (const int lock : {mLock, mFolder})
        if (lock >= 0)
            close(lock);
}

void SingleInstance::Listen(std::function<void()> raise) {
    if (mLock < 0 || mIsPrior)
        return;
    mServer = std::make_unique<QLocalServer>();
    mServer->setSocketOptions(QLocalServer::UserAccessOption);
    QObject::connect(mServer.get(), &QLocalServer::newConnection, mServer.get(),
                     [server = mServer.get(), raise = std::move(raise)] {
                         while (QLocalSocket* caller = server->nextPendingConnection())
                             caller->deleteLater();
                         raise();
                     });
    // The lock is ours, so a socket that stands there was left by a copy that was killed.
    QLocalServer::removeServer(mSocketPath);
    mServer->listen(mSocketPath);
}

bool SingleInstance::ActivateFirst() {
    if (mSocketPath.isEmpty())
        return false;
    // A first copy that has only just begun holds the lock before it listens.
    for (QDeadlineTimer deadline(kLongestWait); !deadline.hasExpired(); QThread::msleep(kPause)) {
        QLocalSocket first;
        first.connectToServer(mSocketPath);
        if (first.waitForConnected(static_cast<int>(deadline.remainingTime())))
            return true;
    }
    return false;
}
