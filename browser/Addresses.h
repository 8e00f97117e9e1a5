// SPDX-License-Identifier: GPL-3.0-or-later
// Where the Help menu's mail and web items lead.
#pragma once

#include <array>

namespace Addresses {

constexpr const char* kHomePage = "https://www.example.com/orvane/";

/// In the order of mnuZulEmail: sales and support of the United Kingdom, then those of South Africa.
constexpr std::array<const char*, 4> kMail = {"mailto:sales.uk@example.com", "mailto:support.uk@example.com",
                                              "mailto:sales.za@example.com", "mailto:support.za@example.com"};

} // namespace Addresses
