// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/settings.h"

#include "platform/errors.h"

#include <QByteArray>
#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QString>
#include <QVariant>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <functional>

namespace {

QString UserFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/velmora/velmora.ini");
}

QString Text(const std::string& utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString SectionPath(const std::string& application, const std::string& section) {
    return Text(application) + QLatin1Char('/') + Text(section);
}

QString KeyPath(const std::string& application, const std::string& section, const std::string& key) {
    return SectionPath(application, section) + QLatin1Char('/') + Text(key);
}

/// Paths can hold bytes that are no UTF-8; those are kept as bytes, all else as text that can be read.
QVariant Stored(const std::string& text) {
    const QString readable = Text(text);
    if (readable.toUtf8().toStdString() == text)
        return readable;
    return QByteArray::fromStdString(text);
}

/// Makes the file, or makes it its owner's alone, before anything is written: it holds the logon list.
bool Protect(const QString& path) {
    const QFileInfo file(path);
    if (!QDir().mkpath(file.absolutePath()))
        return false;
    const int descriptor = open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (descriptor < 0)
        return false;
    const bool isProtected = fchmod(descriptor, S_IRUSR | S_IWUSR) == 0;
    close(descriptor);
    return isProtected;
}

/// Makes a change and puts it on disk.
void Change(std::unique_ptr<QSettings>& store, const std::function<void(QSettings&)>& change) {
    const QString path = store->fileName();
    if (!Protect(path))
        Raise(Errors::kPathAccess, path.toStdString());
    // A failure sticks to its object; the file may be well again by now.
    if (store->status() == QSettings::AccessError)
        store = std::make_unique<QSettings>(path, QSettings::IniFormat);
    change(*store);
    store->sync();
    if (store->status() == QSettings::AccessError)
        Raise(Errors::kPathAccess, path.toStdString());
}

} // namespace

SettingsStore::SettingsStore() : mFile(std::make_unique<QSettings>(UserFile(), QSettings::IniFormat)) {}

SettingsStore::SettingsStore(const std::string& path)
    : mFile(std::make_unique<QSettings>(Text(path), QSettings::IniFormat)) {}

SettingsStore::~SettingsStore() = default;

std::string SettingsStore::GetSetting(const std::string& application, const std::string& section,
                                      const std::string& key, const std::string& fallback) const {
    const QVariant stored = mFile->value(KeyPath(application, section, key));
    if (!stored.isValid())
        return fallback;
    if (stored.userType() == QMetaType::QByteArray)
        return stored.toByteArray().toStdString();
    // A file edited by hand may hold a bare comma, which the format reads as a list.
    if (stored.userType() == QMetaType::QStringList)
        return stored.toStringList().join(QLatin1String(", ")).toStdString();
    return stored.toString().toStdString();
}

void SettingsStore::SaveSetting(const std::string& application, const std::string& section,
                                const std::string& key, const std::string& text) {
    Change(mFile, [&](QSettings& file) { file.setValue(KeyPath(application, section, key), Stored(text)); });
}

bool SettingsStore::HasApplication(const std::string& application) const {
    return mFile->childGroups().contains(Text(application));
}

bool SettingsStore::HasSection(const std::string& application, const std::string& section) const {
    const QString start = SectionPath(application, section) + QLatin1Char('/');
    const QStringList keys = mFile->allKeys();
    return std::any_of(keys.begin(), keys.end(), [&](const QString& key) { return key.startsWith(start); });
}

bool SettingsStore::DeleteSection(const std::string& application, const std::string& section) {
    if (!HasSection(application, section))
        return false;
    Change(mFile, [&](QSettings& file) { file.remove(SectionPath(application, section)); });
    return true;
}

bool SettingsStore::DeleteSetting(const std::string& application, const std::string& section,
                                  const std::string& key) {
    const QString path = KeyPath(application, section, key);
    if (!mFile->contains(path))
        return false;
    Change(mFile, [&](QSettings& file) { file.remove(path); });
    return true;
}
