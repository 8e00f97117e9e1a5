// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/CReadWriteEasyReg.h"

#include "platform/errors.h"
#include "platform/settings.h"

bool CReadWriteEasyReg::OpenRegistry(std::uint32_t root, const std::string& path) {
    CloseRegistry();
    if (root == 0)
        return false;
    mRootKey = root;
    mSubKey = path;
    const std::size_t backslash = path.find('\\');
    mApplication = path.substr(0, backslash);
    mSection = backslash == std::string::npos ? "" : path.substr(backslash + 1);
    if (root != HKEY_CURRENT_USER || mApplication.empty())
        return false;
    mIsOpen = backslash == std::string::npos ? mStore.HasApplication(mApplication)
                                             : mStore.HasSection(mApplication, mSection);
    return mIsOpen;
}

bool CReadWriteEasyReg::DeleteDirectory(const std::string& subkey) {
    // Sections have no keys below them.
    if (!mIsOpen || !mSection.empty() || subkey.empty())
        return false;
    try {
        return mStore.DeleteSection(mApplication, subkey);
    } catch (const RunTimeError&) {
        return false;
    }
}

bool CReadWriteEasyReg::DeleteValue(const std::string& name) {
    // An application's own key has no values.
    if (!mIsOpen || mSection.empty())
        return false;
    try {
        return mStore.DeleteSetting(mApplication, mSection, name);
    } catch (const RunTimeError&) {
        return false;
    }
}

bool CReadWriteEasyReg::CloseRegistry() {
    const bool wasOpen = mIsOpen;
    mIsOpen = false;
    return wasOpen;
}
