// SPDX-License-Identifier: GPL-3.0-or-later
// The ten tabs of a machine's properties, as data: captions, frames and boxes, what each asks the database
// and by which rule a value reads. They tell of the same tables as the lists of the categories, but show
// dates as they are stored and read the flags of the operating system truly. frmProperties builds and fills
// them.
#pragma once

#include "browser/CategoryLists.h"

#include <array>

/// A value beside its caption.
struct PropertyBox {
    std::string_view caption;
    std::size_t position;
    Rule rule;
};

/// Frames and queries share out the boxes of a tab in their order: each has the next `boxes` of them.
struct PropertyFrame {
    const char* name;
    const char* caption;
    std::size_t boxes;
    /// Of the two columns in which the frames stand.
    int column;
};
struct PropertyQuery {
    ListQuery query;
    std::size_t boxes;
};

/// Whether a failure ends the loading of the tab without a word, or the program.
enum class OnFailure : std::uint8_t { LeaveTab, EndProgram };

struct PropertyPage {
    const char* caption;
    OnFailure onFailure;
    /// Of the array of boxes; that of a box is "txtOS(3)".
    const char* boxName = nullptr;
    const char* withoutValue = nullptr;
    std::span<const PropertyBox> boxes = {};
    std::span<const PropertyFrame> frames = {};
    std::span<const PropertyQuery> queries = {};
    /// Over the columns of captions and of boxes, where they have captions themselves.
    std::array<const char*, 2> columnCaptions = {};
    /// Over a list, or over the tree of devices.
    const char* label = nullptr;
    const char* listName = nullptr;
    const ColumnList* list = nullptr;
};

namespace Properties {

extern const std::array<PropertyPage, 10> kPages;
/// Its tab has a tree in front of its boxes, and fills them from the device chosen there.
constexpr int kDevicesPage = 2;
extern const ListQuery kDevices;
/// The machine's place in the query is taken by the identifier of the device.
extern const ListQuery kDevice;

} // namespace Properties
