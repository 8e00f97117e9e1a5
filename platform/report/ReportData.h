// SPDX-License-Identifier: GPL-3.0-or-later
// What a Report holds besides its document: the recordset that it reads, the rows read so far, and what
// callers set. Internal to the report.
#pragma once

#include "platform/report/Report.h"
#include "platform/report/RowOrder.h"

#include <exception>
#include <functional>
#include <map>
#include <optional>

namespace report {

struct Report::Data {
    using Clock = std::chrono::steady_clock;

    explicit Data(const Document& definition) : document(definition) {}
    ~Data() { StopWatching(); }
    Data(const Data&) = delete;
    Data& operator=(const Data&) = delete;

    /// Takes `source` in the place of the last one, and reads it from its first row.
    void Pour(std::shared_ptr<ADODB::Recordset> source);
    /// Forgets what was read.
    void Restart();
    /// Reads until there are no more rows or `end` has come.
    void Read(Clock::time_point end);
    /// What is read so far is all there is.
    void EndReading();
    /// Raises what failed while somebody else disturbed the recordset, once.
    void RaiseKeptFailure();
    bool IsComplete() const { return isRead && !failure; }

    const Document& document;
    std::shared_ptr<ADODB::Recordset> recordset;
    std::function<std::shared_ptr<ADODB::Connection>()> refreshConnection;
    /// Called while the first row is searched for.
    std::function<void()> wait;
    std::optional<Formula> selection;
    RowStore rows;
    /// Of the rows as they were read, where groups sort; known when all are read.
    std::vector<std::uint32_t> order;
    RowOrder sorting{document.groups};
    /// Of a subreport: the field that joins it, and its rows by that field's values.
    std::optional<std::size_t> joinField;
    JoinIndex joined;
    /// A report without data is complete.
    bool isRead = true;
    std::exception_ptr failure;

    std::unordered_map<std::string, FormatEvent> events;
    /// By the names of their objects.
    std::map<std::string, std::unique_ptr<Report>, std::less<>> subreports;

private:
    /// Where a field's values come from; without a column the field is empty.
    struct Binding {
        const ADODB::Field* column = nullptr;
        /// A column of flags under a field of texts reads "True" and "False".
        bool isFlagAsText = false;
    };

    void Bind();
    void Keep(const Row& row);
    void Watch();
    void StopWatching();

    std::vector<Binding> mBindings;
    Row mRow;
    bool mHasStarted = false;
    bool mIsWatching = false;
};

} // namespace report
