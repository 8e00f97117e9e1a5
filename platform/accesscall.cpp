// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/accesscall.h"

#include "platform/errors.h"

#include <sqlite3.h>

#include <cmath>

namespace Access {

namespace {

// Far beyond any text of an inventory, and small enough for nested calls of Replace and String.
constexpr std::size_t kLongestResult = 16U << 20U;

} // namespace

void CheckLength(std::size_t bytes) {
    if (bytes > kLongestResult)
        Raise(Errors::kOutOfMemory);
}

bool Call::IsNull(int index) const {
    return sqlite3_value_type(mValues[index]) == SQLITE_NULL;
}

bool Call::IsText(int index) const {
    const int type = sqlite3_value_type(mValues[index]);
    return type == SQLITE_TEXT || type == SQLITE_BLOB;
}

bool Call::IsAnyNull() const {
    for (int i = 0; i < mCount; ++i)
        if (IsNull(i))
            return true;
    return false;
}

std::string Call::Text(int index) const {
    if (sqlite3_value_type(mValues[index]) == SQLITE_FLOAT)
        return NumberText(sqlite3_value_double(mValues[index]));
    const unsigned char* bytes = sqlite3_value_text(mValues[index]);
    if (bytes == nullptr)
        return {};
    const auto size = static_cast<std::size_t>(sqlite3_value_bytes(mValues[index]));
    return {reinterpret_cast<const char*>(bytes), size};
}

double Call::Number(int index) const {
    if (!IsText(index))
        return sqlite3_value_double(mValues[index]);
    return CDbl(Text(index));
}

std::int32_t Call::Whole(int index) const {
    return CLng(Number(index));
}

std::size_t Call::Length(int index) const {
    const std::int32_t length = Whole(index);
    if (length < 0)
        Raise(Errors::kInvalidCall);
    return static_cast<std::size_t>(length);
}

std::int64_t Call::BigWhole(int index) const {
    if (sqlite3_value_type(mValues[index]) == SQLITE_INTEGER)
        return sqlite3_value_int64(mValues[index]);
    constexpr double kEnd = 9223372036854775808.0;
    const double rounded = std::nearbyint(Number(index));
    if (!(rounded > -kEnd && rounded < kEnd))
        Raise(Errors::kOverflow);
    return static_cast<std::int64_t>(rounded);
}

void Call::ReturnNull() {
    sqlite3_result_null(mContext);
}

void Call::Return(double number) {
    constexpr double kExact = 9007199254740992.0;
    if (!std::isfinite(number))
        Raise(Errors::kOverflow);
    if (number == std::trunc(number) && std::abs(number) <= kExact)
        sqlite3_result_int64(mContext, static_cast<std::int64_t>(number));
    else
        sqlite3_result_double(mContext, number);
}

void Call::Return(std::int64_t number) {
    sqlite3_result_int64(mContext, number);
}

void Call::Return(std::string_view text) {
    CheckLength(text.size());
    sqlite3_result_text(mContext, text.data() == nullptr ? "" : text.data(), static_cast<int>(text.size()),
                        SQLITE_TRANSIENT);
}

} // namespace Access
