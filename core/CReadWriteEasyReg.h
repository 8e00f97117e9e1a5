// SPDX-License-Identifier: GPL-3.0-or-later
// The settings store seen as a tree of keys, as far as the start-up's switches need it: a key is the
// application ("Velmora") or one of its sections ("Velmora\Settings"). One key is open at a time. Nothing
// here raises an error: what fails returns false.
#pragma once

#include <cstdint>
#include <string>

class SettingsStore;

constexpr std::uint32_t HKEY_CURRENT_USER = 0x80000001;

class CReadWriteEasyReg {
public:
    explicit CReadWriteEasyReg(SettingsStore& store) : mStore(store) {}

    /// Closes the open key and opens the one at `path`; false where there is none. With a root of 0 no key is
    /// open afterwards, and the old root and path stay on record.
    bool OpenRegistry(std::uint32_t root, const std::string& path);
    /// Removes the key `subkey` below the open one, with all its values.
    bool DeleteDirectory(const std::string& subkey);
    /// Removes a value of the open key.
    bool DeleteValue(const std::string& name);
    /// False where no key is open.
    bool CloseRegistry();

    std::uint32_t RegistryRootKey() const { return mRootKey; }
    const std::string& SubDirectory() const { return mSubKey; }
    bool IsOpen() const { return mIsOpen; }

private:
    SettingsStore& mStore;
    std::uint32_t mRootKey = 0;
    std::string mSubKey;
    bool mIsOpen = false;
    std::string mApplication;
    /// Empty while the application's own key is open.
    std::string mSection;
};
