// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/LogonUsers.h"

#include "core/Admin.h"
#include "core/ConsoleSettings.h"
#include "platform/codepage.h"
#include "platform/errors.h"

namespace LogonUsers {

namespace {

constexpr const char* kKey = "USER_LI";

bool CanBeListed(std::string_view text) {
    return CodePage::System().Holds(text);
}

} // namespace

bool IsStoreEmpty(const SettingsStore& store) {
    return ConsoleSettings::Get(store, kKey).empty();
}

std::string Read(const SettingsStore& store) {
    return Admin::UnscrambleText(ConsoleSettings::Get(store, kKey));
}

void Write(SettingsStore& store, std::string_view list) {
    ConsoleSettings::Save(store, kKey, Admin::ScrambleText(list));
}

std::string Entry(std::string_view name, std::string_view password) {
    if (!CanBeListed(name) || !CanBeListed(password))
        Raise(Errors::kInvalidCall);
    return std::string(name).append(":").append(password).append(";");
}

bool Contains(std::string_view list, std::string_view name, std::string_view password) {
    return CanBeListed(name) && CanBeListed(password) &&
           list.find(Entry(name, password)) != std::string_view::npos;
}

std::optional<std::string> WithNewPassword(std::string_view list, std::string_view name,
                                           std::string_view oldPassword, std::string_view newPassword) {
    if (!Contains(list, name, oldPassword))
        return std::nullopt;
    const std::string entry = Entry(name, oldPassword);
    const std::size_t place = list.find(entry);
    return std::string(list).replace(place, entry.size(), Entry(name, newPassword));
}

std::vector<User> Users(std::string_view list) {
    std::vector<User> users;
    User user;
    for (std::size_t end = list.find(';'); end != std::string_view::npos && users.size() < kMost;
         end = list.find(';')) {
        const std::string_view entry = list.substr(0, end);
        list.remove_prefix(end + 1);
        if (const std::size_t colon = entry.find(':'); colon != std::string_view::npos)
            user = {std::string(entry.substr(0, colon)), std::string(entry.substr(colon + 1))};
        users.push_back(user);
    }
    return users;
}

std::string List(const std::vector<User>& users) {
    std::string list;
    for (const User& user : users) {
        if (user.name.empty())
            break;
        list += Entry(user.name, user.password);
    }
    return list;
}

} // namespace LogonUsers
