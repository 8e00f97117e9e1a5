// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/DocumentTree.h"

#include "platform/errors.h"
#include "platform/report/Formula.h"
#include "platform/text.h"

#include <toml++/toml.h>

#include <algorithm>
#include <cmath>

namespace report {

namespace {

constexpr std::size_t kLargestDocument = std::size_t{1} << 20U;
/// Documents need five levels. Each level of tables costs stack when they are taken down again, and dots in a
/// name make levels too, so both are bounded before anything is built.
constexpr std::size_t kDeepestNesting = 16;
constexpr std::size_t kMostDots = 8;
constexpr std::size_t kLongestText = 4096;
constexpr std::size_t kLongestCause = 300;

/// Walks over a text of the format, strings and comments aside. It understands well-formed text alone; the
/// parser ends at the first place that is not.
class NestingCheck {
public:
    explicit NestingCheck(std::string_view text) : mText(text) {}

    void Run() {
        while (mPosition < mText.size())
            Step();
    }

private:
    void Step() {
        const char c = mText[mPosition];
        switch (c) {
            case '#':
                mPosition = std::min(mText.find('\n', mPosition), mText.size());
                return;
            case '"':
            case '\'':
                SkipText(c);
                return;
            case '[':
            case '{':
                if (++mDepth > kDeepestNesting)
                    Complain(mLine, "tables and lists nest too deep");
                mDots = 0;
                break;
            case ']':
            case '}':
                mDepth -= std::min<std::size_t>(mDepth, 1);
                mDots = 0;
                break;
            case '.':
                if (++mDots > kMostDots)
                    Complain(mLine, "a name has too many parts");
                break;
            case '\n':
                ++mLine;
                mDots = 0;
                break;
            case '=':
            case ',':
                mDots = 0;
                break;
            default:
                break;
        }
        ++mPosition;
    }

    void SkipText(char quote) {
        const std::string three(3, quote);
        const bool hasManyLines = mText.substr(mPosition, 3) == three;
        mPosition += hasManyLines ? 3 : 1;
        while (mPosition < mText.size()) {
            const char c = mText[mPosition];
            if (c == '\n') {
                if (!hasManyLines)
                    return;
                ++mLine;
            }
            if (c == '\\' && quote == '"') {
                // A line's end behind it still counts as one.
                ++mPosition;
                if (mPosition < mText.size() && mText[mPosition] == '\n')
                    ++mLine;
                ++mPosition;
                continue;
            }
            if (c == quote && (!hasManyLines || mText.substr(mPosition, 3) == three)) {
                mPosition += hasManyLines ? 3 : 1;
                // Up to two more quotes belong to the text itself.
                for (int i = 0; hasManyLines && i < 2 && mPosition < mText.size(); ++i)
                    mPosition += mText[mPosition] == quote ? 1 : 0;
                return;
            }
            ++mPosition;
        }
    }

    std::string_view mText;
    std::size_t mPosition = 0;
    std::size_t mLine = 1;
    std::size_t mDepth = 0;
    std::size_t mDots = 0;
};

std::size_t LineOf(const toml::source_region& source) {
    return std::max<std::size_t>(source.begin.line, 1);
}

DocumentNode Converted(const toml::node& source);

std::vector<DocumentNode> Entries(const toml::table& table) {
    std::vector<DocumentNode> entries;
    entries.reserve(table.size());
    for (const auto& [key, value] : table) {
        entries.push_back(Converted(value));
        entries.back().key = std::string(key.str());
        if (entries.back().kind != DocumentNode::Kind::List)
            entries.back().line = LineOf(key.source());
    }
    std::ranges::stable_sort(entries, {}, &DocumentNode::line);
    return entries;
}

DocumentNode Converted(const toml::node& source) {
    DocumentNode node;
    node.line = LineOf(source.source());
    if (const auto* text = source.as_string()) {
        node.kind = DocumentNode::Kind::Text;
        node.text = text->get();
    } else if (const auto* whole = source.as_integer()) {
        node.kind = DocumentNode::Kind::Number;
        node.number = static_cast<double>(whole->get());
    } else if (const auto* number = source.as_floating_point()) {
        node.kind = DocumentNode::Kind::Number;
        node.number = number->get();
    } else if (const auto* flag = source.as_boolean()) {
        node.kind = DocumentNode::Kind::Boolean;
        node.isTrue = flag->get();
    } else if (const auto* list = source.as_array()) {
        node.kind = DocumentNode::Kind::List;
        node.items.reserve(list->size());
        for (const toml::node& item : *list)
            node.items.push_back(Converted(item));
    } else if (const auto* table = source.as_table()) {
        node.items = Entries(*table);
    } else {
        Complain(node.line, "dates and times have no meaning here");
    }
    return node;
}

} // namespace

void Complain(std::size_t line, const std::string& cause) {
    std::string text(FirstCharacters(cause, kLongestCause));
    std::ranges::replace_if(
        text, [](unsigned char c) { return c < ' ' || c == 0x7F; }, ' ');
    throw RunTimeError(kMalformed, "line " + std::to_string(line) + ": " + text);
}

DocumentNode ReadDocumentTree(std::string_view text) {
    if (text.size() > kLargestDocument)
        Complain(1, "the document is larger than a megabyte");
    NestingCheck(text).Run();
    try {
        return Converted(toml::parse(text));
    } catch (const toml::parse_error& error) {
        Complain(LineOf(error.source()), std::string(error.description()));
    }
}

TableReader::TableReader(const DocumentNode& node, std::string what)
    : mNode(node), mWhat(std::move(what)), mIsRead(node.items.size()) {
    if (node.kind != DocumentNode::Kind::Table)
        Complain(node.line, "a table is expected as " + mWhat);
}

const DocumentNode* TableReader::Find(std::string_view key) {
    for (std::size_t i = 0; i < mNode.items.size(); ++i) {
        if (mNode.items[i].key == key) {
            mIsRead[i] = true;
            return &mNode.items[i];
        }
    }
    return nullptr;
}

std::optional<std::string> TableReader::Text(std::string_view key) {
    const DocumentNode* node = Find(key);
    if (node == nullptr)
        return std::nullopt;
    if (node->kind != DocumentNode::Kind::Text)
        Complain(node->line, "\"" + std::string(key) + "\" must be a text");
    if (node->text.size() > kLongestText)
        Complain(node->line, "\"" + std::string(key) + "\" is too long");
    return node->text;
}

std::string TableReader::Required(std::string_view key) {
    std::optional<std::string> text = Text(key);
    if (!text || text->empty())
        Complain(mNode.line, mWhat + " has no \"" + std::string(key) + "\"");
    return *text;
}

std::optional<double> TableReader::Number(std::string_view key, double least, double most) {
    const DocumentNode* node = Find(key);
    if (node == nullptr)
        return std::nullopt;
    if (node->kind != DocumentNode::Kind::Number || !(node->number >= least && node->number <= most))
        Complain(node->line, "\"" + std::string(key) + "\" must be a number from " + NumberText(least) +
                                 " to " + NumberText(most));
    return node->number;
}

bool TableReader::Flag(std::string_view key, bool fallback) {
    const DocumentNode* node = Find(key);
    if (node == nullptr)
        return fallback;
    if (node->kind != DocumentNode::Kind::Boolean)
        Complain(node->line, "\"" + std::string(key) + "\" must be true or false");
    return node->isTrue;
}

std::span<const DocumentNode> TableReader::List(std::string_view key, std::size_t most) {
    const DocumentNode* node = Find(key);
    if (node == nullptr)
        return {};
    if (node->kind != DocumentNode::Kind::List)
        Complain(node->line, "\"" + std::string(key) + "\" must be a list");
    if (node->items.size() > most)
        Complain(node->line, "\"" + std::string(key) + "\" has more than " + std::to_string(most) + " items");
    return node->items;
}

std::optional<std::size_t> TableReader::Choice(std::string_view key,
                                               std::span<const std::string_view> choices) {
    const std::optional<std::string> text = Text(key);
    if (!text)
        return std::nullopt;
    std::string known;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (choices[i] == *text)
            return i;
        known += (i == 0 ? "\"" : ", \"") + std::string(choices[i]) + "\"";
    }
    Complain(Find(key)->line, "\"" + std::string(key) + "\" must be one of " + known);
}

void TableReader::Finish() const {
    for (std::size_t i = 0; i < mNode.items.size(); ++i)
        if (!mIsRead[i])
            Complain(mNode.items[i].line, "\"" + mNode.items[i].key + "\" has no meaning in " + mWhat);
}

} // namespace report
