// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a report, kept by the report itself, so that a report on show stays whole when the database is
// closed or imported anew. Rows beyond a few megabytes go to a temporary file without a name, readable by its
// owner alone.
#pragma once

#include "platform/adodb.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace report {

using Row = std::vector<ADODB::Value>;

class RowStore {
public:
    /// `memoryLimit` bytes are held in memory before the file is made.
    explicit RowStore(std::size_t memoryLimit = std::size_t{32} << 20);
    ~RowStore();
    RowStore(const RowStore&) = delete;
    RowStore& operator=(const RowStore&) = delete;

    /// Raises error 61 where the disk is full.
    void Append(std::span<const ADODB::Value> row);
    std::size_t Count() const;
    /// Row `index` from 0 into `row`, whose memory is used again.
    void Read(std::size_t index, Row& row) const;
    void Clear();

private:
    struct Implementation;
    std::unique_ptr<Implementation> mThis;
};

} // namespace report
