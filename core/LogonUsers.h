// SPDX-License-Identifier: GPL-3.0-or-later
// The console's own logon users: one text, "<name>:<password>;" for each, kept scrambled in the settings.
// Nothing is escaped: a ":" or ";" in a name or password breaks the list. It keeps out the curious, no more.
// The store holds only characters of the system's code page; other texts could become one and the same.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class SettingsStore;

namespace LogonUsers {

constexpr std::size_t kMost = 10;

struct User {
    std::string name;
    std::string password;
};

/// Whether nobody has been listed yet.
bool IsStoreEmpty(const SettingsStore& store);
/// The plain list. Raises error 5 for a stored text that no list can have made.
std::string Read(const SettingsStore& store);
/// Raises error 5 for a character that can't be scrambled, and what the store raises that can't be written.
void Write(SettingsStore& store, std::string_view list);

/// One user's part of the list. Raises error 5 for a character that the store lacks.
std::string Entry(std::string_view name, std::string_view password);

/// Whether the list holds this entry, or one that ends in it: the tail of a listed name will do.
bool Contains(std::string_view list, std::string_view name, std::string_view password);

/// The list with another password in the first place that holds `name` and `oldPassword`; nothing where none
/// does. An empty name stands for the first user who has the old password. Raises what Entry raises for the
/// new one.
std::optional<std::string> WithNewPassword(std::string_view list, std::string_view name,
                                           std::string_view oldPassword, std::string_view newPassword);

/// The users of the list, at most kMost. An entry without ":" repeats the one before it.
std::vector<User> Users(std::string_view list);
/// The list of `users` up to the first without a name. Raises what Entry raises.
std::string List(const std::vector<User>& users);

} // namespace LogonUsers
