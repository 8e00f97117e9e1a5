// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the sections of a report document: their lines, and the objects of these. Fields and formulas of the
// document must be known by then.
#pragma once

#include "platform/report/Document.h"
#include "platform/report/DocumentTree.h"

#include <cstddef>
#include <set>
#include <string>

namespace report {

class SectionReader {
public:
    explicit SectionReader(const Document& document) : mDocument(document) {}

    /// The section of `node`; one without lines where that is null.
    Section Read(const DocumentNode* node, SectionKind kind, std::size_t group);

private:
    Line ReadLine(const DocumentNode& node, SectionKind kind);
    ObjectDefinition ReadObject(const DocumentNode& node, SectionKind kind);

    /// Complains about a name that stands twice.
    static void Claim(std::set<std::string>& names, TableReader& table, std::string& name);

    const Document& mDocument;
    std::set<std::string> mSectionNames;
    std::set<std::string> mObjectNames;
    /// Over all sections, to bound them.
    std::size_t mObjects = 0;
    int mSteps = 0;
};

/// The format that the keys "format" and "decimals" give.
Format ReadFormat(TableReader& table, const Format& fallback);

/// Names sections and objects that have none: objects by their kind and number, sections by their number.
void GiveNames(Document& document);

} // namespace report
