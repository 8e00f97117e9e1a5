// SPDX-License-Identifier: GPL-3.0-or-later
// The help: its window as a person uses it by keyboard, the commands that open it, and the mail and web
// items beside them.
#include "platform/errors.h"
#include "tests/browser/HelpTest.h"

namespace {

TEST_F(HelpTest, F1OpensTheContentsAtTheFirstPage) {
    LoadWithHelp();
    Press(Qt::Key_F1);
    ASSERT_NE(Help(), nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(Help()));
    EXPECT_EQ(Tab(), "Contents");
    EXPECT_EQ(Shown(), "index.html");
    EXPECT_TRUE(Page().toPlainText().contains("First steps"));
    EXPECT_FALSE(Page().toPlainText().contains("SPDX")) << "what is no text of the page";
    auto& contents = In<QTreeView>("tvContents");
    EXPECT_TRUE(contents.hasFocus());
    ASSERT_TRUE(Eventually([&] { return contents.currentIndex().isValid(); }));
    EXPECT_EQ(contents.currentIndex().data().toString(), "MOVA Administration Module");

    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    EXPECT_EQ(Shown(), "start.html") << "the page follows the entry";
    const frmHelp* const first = Help();
    Action("mnuHelpContents").trigger();
    EXPECT_EQ(Help(), first) << "one window, asked for twice";
    EXPECT_EQ(Shown(), "index.html");
}

TEST_F(HelpTest, TheContentsKeepUpWithLinksAndHistory) {
    Open();
    auto& contents = In<QTreeView>("tvContents");
    const auto entry = [&] { return contents.currentIndex().data().toString().toStdString(); };
    emit Page().anchorClicked(HelpBook::FirstPage().resolved(QUrl("import.html#quick")));
    EXPECT_EQ(Shown(), "import.html#quick");
    emit Page().anchorClicked(HelpBook::FirstPage().resolved(QUrl("databases.html")));
    EXPECT_EQ(entry(), "Databases");
    Press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Shown(), "import.html#quick");
    Press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(Shown(), "databases.html");
    Press(Qt::Key_Home, Qt::AltModifier);
    EXPECT_EQ(Shown(), "index.html");
}

TEST_F(HelpTest, SearchFindsThePageByAWordThatStandsThereAlone) {
    Open("mnuHelpSearch");
    EXPECT_EQ(Tab(), "Search");
    ASSERT_TRUE(In<QLineEdit>("txtSearch").hasFocus());
    auto& hits = In<QListWidget>("lstHits");
    const auto& count = In<QLabel>("lblHits");
    struct {
        const char *words, *page, *why;
    } cases[] = {
        {"lpoptions", "printers.html", "one word"},
        {"lpoptions pingsound", "", "words of two pages, and of none together"},
        {"lpoptions \"", "printers.html", "a sign of the query's language"},
        {"NOT lpoptions AND", "printers.html", "words of that language are words"},
        {"xyzzy", "", "a word that no page holds"},
    };
    for (const auto& c : cases) {
        In<QLineEdit>("txtSearch").setText(c.words);
        hits.clear();
        In<QLabel>("lblHits").clear();
        Press(Qt::Key_Return);
        ASSERT_TRUE(Eventually([&] { return count.text() != "Searching..."; })) << c.why;
        ASSERT_EQ(hits.count(), *c.page == '\0' ? 0 : 1) << c.why;
        if (hits.count() == 0)
            continue;
        EXPECT_EQ(hits.item(0)->data(Qt::UserRole).toUrl().fileName(), c.page) << c.why;
        EXPECT_FALSE(hits.item(0)->text().contains('<')) << "plain text";
    }

    In<QLineEdit>("txtSearch").setText("lpoptions");
    Press(Qt::Key_Return);
    ASSERT_TRUE(Eventually([&] { return hits.count() == 1; }));
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    EXPECT_EQ(Shown(), "printers.html");
    EXPECT_EQ(Page().textCursor().selectedText(), "lpoptions") << "the page stands at the word";

    Action("mnuHelpSearch").trigger();
    EXPECT_TRUE(In<QLineEdit>("txtSearch").text().isEmpty()) << "each search begins anew";
    EXPECT_EQ(hits.count(), 0);
}

TEST_F(HelpTest, TheIndexLeadsToThePlace) {
    Open();
    Press(Qt::Key_I, Qt::AltModifier);
    EXPECT_EQ(Tab(), "Index");
    ASSERT_TRUE(In<QLineEdit>("txtIndex").hasFocus());
    Type("quick");
    Press(Qt::Key_Return);
    EXPECT_EQ(Shown(), "import.html#quick");
    Press(Qt::Key_A, Qt::ControlModifier);
    Type("pingsound");
    Press(Qt::Key_Down);
    EXPECT_TRUE(In<QListView>("lstIndex").hasFocus());
    Press(Qt::Key_Return);
    EXPECT_EQ(Shown(), "collector.html#ini");
}

TEST_F(HelpTest, FindGoesRoundThePage) {
    Open();
    Press(Qt::Key_F, Qt::ControlModifier);
    auto& line = In<QLineEdit>("txtFind");
    ASSERT_TRUE(line.hasFocus());
    Type("COLLECTOR");
    Press(Qt::Key_Return);
    const int first = Page().textCursor().position();
    EXPECT_EQ(Page().textCursor().selectedText().toLower(), "collector");
    int places = 1;
    for (Press(Qt::Key_F3); Page().textCursor().position() != first && places < 100; Press(Qt::Key_F3))
        ++places;
    EXPECT_EQ(places, Page().toPlainText().count("collector", Qt::CaseInsensitive))
        << "each once, then the first";
    Press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_GT(Page().textCursor().position(), first) << "from the first back to the last";
    line.setText("xyzzy");
    Press(Qt::Key_Return);
    EXPECT_FALSE(In<QLabel>("lblFind").text().isEmpty());
    Press(Qt::Key_Escape);
    EXPECT_FALSE(In<QWidget>("findLine").isVisible());
    EXPECT_TRUE(Page().hasFocus());
    Press(Qt::Key_Escape);
    EXPECT_EQ(FormRegistry::Instance().Find("frmHelp"), nullptr) << "with nothing else to close, the window";
}

TEST_F(HelpTest, TextGrowsAndComesBackAndF6ChangesThePane) {
    Open();
    const double size = Page().font().pointSizeF();
    Press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_GT(Page().font().pointSizeF(), size);
    Press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(Page().font().pointSizeF(), size);
    Press(Qt::Key_F6);
    EXPECT_TRUE(Page().hasFocus());
    Press(Qt::Key_F6);
    EXPECT_TRUE(In<QTreeView>("tvContents").hasFocus());
}

TEST_F(HelpTest, LinksLeaveTheHelpForTheDesktopAlone) {
    Open();
    for (const char* link : {"file:///etc/passwd", "ssh://example.com", "mailto:support.uk@example.com",
                             "https://www.example.com/orvane/"}) {
        emit Page().anchorClicked(QUrl(link));
        EXPECT_EQ(Shown(), "index.html") << link;
    }
    EXPECT_EQ(desktop.opened,
              (std::vector<std::string>{"mailto:support.uk@example.com", "https://www.example.com/orvane/"}))
        << "no file of this computer, and no other program";
    EXPECT_TRUE(Page()
                    .loadResource(QTextDocument::ImageResource, QUrl("file:///etc/passwd"))
                    .toByteArray()
                    .isEmpty());
}

TEST_F(HelpTest, GoesWithTheMainWindowAndLeavesNothingBehind) {
    Open();
    const std::string engine = Help()->Book().Folder();
    EXPECT_TRUE(std::filesystem::exists(engine));
    const std::string stored = folder.ReadFile("settings.ini");
    Press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(Help(), nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(std::filesystem::exists(engine));
    EXPECT_EQ(folder.ReadFile("settings.ini"), stored);

    Action("mnuHelpContents").trigger();
    ASSERT_NE(Help(), nullptr);
    form->close();
    EXPECT_EQ(Help(), nullptr);
}

TEST_F(HelpTest, AHelpFileThatCanNotBeReadOrIsNoneIsTold) {
    MakeDatabase({});
    LoadAndShow();
    const std::string path = folder.Path("MOVA.HLP");
    prompts.Expect(Box("Error#53", "File not found: " + path, MsgBoxStyle::kCritical));
    Press(Qt::Key_F1);

    std::filesystem::copy_file(MOVA_HELP_FILE, path);
    const std::string whole = folder.ReadFile("MOVA.HLP");
    for (const std::string& bytes : {std::string(), whole.substr(0, whole.size() / 2),
                                     whole.substr(0, 4096) + std::string(whole.size() - 4096, 'x')}) {
        folder.WriteFile("MOVA.HLP", bytes);
        prompts.Expect(Question{Question::Kind::Box, "Error#75", {}, MsgBoxStyle::kCritical});
        Action("mnuHelpSearch").trigger();
        EXPECT_EQ(Help(), nullptr) << bytes.size();
    }
    folder.WriteFile("MOVA.HLP", whole);
    Action("mnuHelpSearch").trigger();
    EXPECT_NE(Help(), nullptr) << "well again at the next try";

    CloseHelp();
    form->HelpFile("");
    prompts.Expect(Box("MOVA Professional Administration Module",
                       "Unable to display Help Contents. There is no Help associated with this project.",
                       MsgBoxStyle::kInformation));
    Action("mnuHelpContents").trigger();
    EXPECT_EQ(Help(), nullptr);
}

TEST_F(HelpTest, MailAndWebGoToTheDesktopWhateverItSays) {
    MakeDatabase({});
    Load();
    for (const bool hasPrograms : {true, false}) {
        desktop.hasPrograms = hasPrograms;
        desktop.opened.clear();
        for (const char* item :
             {"mnuZulWeb(0)", "mnuZulEmail(0)", "mnuZulEmail(1)", "mnuZulEmail(2)", "mnuZulEmail(3)"})
            Action(item).trigger();
        const std::vector<std::string> expected = {
            "https://www.example.com/orvane/", "mailto:sales.uk@example.com", "mailto:support.uk@example.com",
            "mailto:sales.za@example.com", "mailto:support.za@example.com"};
        EXPECT_EQ(desktop.opened, expected);
    }
}

} // namespace
