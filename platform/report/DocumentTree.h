// SPDX-License-Identifier: GPL-3.0-or-later
// The text of a report document as a plain tree of values with their lines, and checked access to its tables.
// Keeps the parser of the format, and its own exceptions, out of everything else. Errors are RunTimeError -1
// with "line N: cause".
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace report {

struct DocumentNode {
    enum class Kind : std::uint8_t { Text, Number, Boolean, List, Table };
    Kind kind = Kind::Table;
    std::size_t line = 1;
    /// Within a table.
    std::string key;
    std::string text;
    double number = 0;
    bool isTrue = false;
    /// Of a list; of a table in the order of their lines.
    std::vector<DocumentNode> items;
};

/// The document's outermost table. Refuses text of more than a megabyte.
DocumentNode ReadDocumentTree(std::string_view text);

/// Raises error -1 with the line. Control characters in `cause` become blanks.
[[noreturn]] void Complain(std::size_t line, const std::string& cause);

/// Reads a table key by key, and complains about keys that nobody asked for.
class TableReader {
public:
    /// `what` names the table in complaints about its kind and about what it lacks.
    TableReader(const DocumentNode& node, std::string what);

    std::size_t Line() const { return mNode.line; }
    /// Null where the table has no such key.
    const DocumentNode* Find(std::string_view key);
    std::optional<std::string> Text(std::string_view key);
    /// Complains where there is none, or an empty one.
    std::string Required(std::string_view key);
    std::optional<double> Number(std::string_view key, double least, double most);
    bool Flag(std::string_view key, bool fallback);
    /// Nothing where there is none.
    std::span<const DocumentNode> List(std::string_view key, std::size_t most);
    /// The place of the text in `choices`; complains about any other.
    std::optional<std::size_t> Choice(std::string_view key, std::span<const std::string_view> choices);

    /// Complains about the first key that was not read.
    void Finish() const;

private:
    const DocumentNode& mNode;
    std::string mWhat;
    std::vector<bool> mIsRead;
};

} // namespace report
