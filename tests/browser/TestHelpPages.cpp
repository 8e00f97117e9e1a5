// SPDX-License-Identifier: GPL-3.0-or-later
// The pages of the help as a whole: nothing in them leads nowhere, and nothing stands apart.
#include "tests/browser/HelpTest.h"

#include <QHelpContentModel>
#include <QHelpIndexModel>
#include <QRegularExpression>

#include <set>

namespace {

class HelpPagesTest : public HelpTest {
protected:
    void SetUp() override { Open(); }

    static const HelpBook& Book() { return Help()->Book(); }

    /// Whether the help holds the page, and the place in it.
    static bool IsThere(const QUrl& place) {
        const QByteArray page = Book().Data(place);
        const QByteArray name = "name=\"" + place.fragment().toUtf8() + '"';
        return !page.isEmpty() && (place.fragment().isEmpty() || page.contains(name));
    }

    static void AddEntries(const QModelIndex& parent, std::set<QString>& pages) {
        const QHelpContentModel& contents = Book().Contents();
        for (int row = 0; row < contents.rowCount(parent); ++row) {
            const QModelIndex entry = contents.index(row, 0, parent);
            const QUrl place = Book().PageOf(entry);
            EXPECT_TRUE(IsThere(place)) << entry.data().toString().toStdString();
            pages.insert(place.fileName());
            AddEntries(entry, pages);
        }
    }
};

TEST_F(HelpPagesTest, TheContentsLeadToEveryPage) {
    std::set<QString> reached;
    AddEntries({}, reached);
    ASSERT_GT(reached.size(), 10U);
    for (const QUrl& page : Book().Pages())
        EXPECT_TRUE(reached.contains(page.fileName())) << page.fileName().toStdString();
}

TEST_F(HelpPagesTest, EveryLinkAndEveryKeywordLeadsSomewhere) {
    const QRegularExpression link("(?:href|src)=\"([^\"]*)\"");
    for (const QUrl& page : Book().Pages()) {
        auto match = link.globalMatch(QString::fromUtf8(Book().Data(page)));
        EXPECT_TRUE(match.hasNext()) << page.fileName().toStdString();
        while (match.hasNext()) {
            const QString target = match.next().captured(1);
            EXPECT_TRUE(IsThere(page.resolved(QUrl(target))))
                << page.fileName().toStdString() << " to " << target.toStdString();
        }
    }
    const QStringList keywords = Book().Index().stringList();
    ASSERT_GT(keywords.size(), 50);
    for (const QString& keyword : keywords)
        EXPECT_TRUE(IsThere(Book().PageOf(keyword))) << keyword.toStdString();
}

TEST_F(HelpPagesTest, EveryCommandOfTheMenusIsExplained) {
    const QString menus = QString::fromUtf8(Book().Data(HelpBook::FirstPage().resolved(QUrl("menus.html"))));
    const auto explains = [&](const std::string& text) {
        return menus.contains(QString::fromStdString(text));
    };
    for (const CommandRow& row : MenuCommands()) {
        // The pop-up menus have a page of their own; reports are told of as one.
        if (row.kind == CommandKind::PopUp)
            break;
        if (row.parent == "MNUReport" || row.parent.starts_with("mnuRep"))
            continue;
        std::string caption = WithoutAccessKey(row.caption);
        // What differs in the office alone is told once.
        if (caption.starts_with("Email"))
            caption = caption.substr(0, caption.find(" ("));
        EXPECT_TRUE(explains(caption)) << caption;
        EXPECT_TRUE(explains(std::string(row.shortcut))) << caption;
    }
}

} // namespace
