// SPDX-License-Identifier: GPL-3.0-or-later
// The list of logon users, from the rules of its text to the dialogs that found, read and change it.
#include "core/Globals.h"
#include "core/frmLogin.h"
#include "core/frmLoginVerify.h"
#include "core/frmUsers.h"
#include "platform/errors.h"
#include "tests/core/DialogTest.h"
#include "tests/support/ErrorOf.h"

#include <QGroupBox>
#include <QListWidget>

namespace {

TEST(LogonUsers, ATailOfANameWithItsPasswordIsEnough) {
    constexpr const char* kList = "root:first;guest:second;";
    const struct {
        const char* why;
        const char *name, *password;
        bool isListed;
    } cases[] = {
        {"as listed", "root", "first", true},
        {"the tail of a name", "est", "second", true},
        {"no name is the tail of any", "", "second", true},
        {"the head of a name is not", "gue", "second", false},
        {"another's password", "root", "second", false},
        {"the head of a password", "root", "fir", false},
        {"case counts", "Root", "first", false},
        {"nothing guards against a name that spans entries", "root:first;guest", "second", true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(LogonUsers::Contains(kList, c.name, c.password), c.isListed) << c.why;
}

TEST(LogonUsers, AreReadAsFarAsTheirMarksTell) {
    const struct {
        const char* why;
        const char *list, *read;
    } cases[] = {
        {"none", "", ""},
        {"two", "root:first;guest:second;", "root=first guest=second "},
        {"what no mark ends is no entry", "root:first;guest:second", "root=first "},
        {"an entry without a colon repeats the one before it", "root:first;guest;", "root=first root=first "},
        {"and is empty where it is the first", "guest;root:first;", "= root=first "},
        {"a colon in a password stays in it", "root:a:b;", "root=a:b "},
        {"a semicolon in a password breaks the list", "root:a;b;", "root=a root=a "},
        {"ten at most", "1:;2:;3:;4:;5:;6:;7:;8:;9:;10:;11:;", "1= 2= 3= 4= 5= 6= 7= 8= 9= 10= "},
    };
    for (const auto& c : cases) {
        std::string read;
        for (const LogonUsers::User& user : LogonUsers::Users(c.list))
            read += user.name + "=" + user.password + " ";
        EXPECT_EQ(read, c.read) << c.why;
    }
}

TEST(LogonUsers, ANewPasswordReplacesTheFirstEntryThatFits) {
    const struct {
        const char* why;
        const char *user, *old, *list;
    } cases[] = {
        {"the user's own", "guest", "same", "root:same;guest:new;"},
        {"nobody has logged on: the first who has the password, under the name that stands there", "", "same",
         "root:new;guest:same;"},
        {"a wrong password", "root", "other", nullptr},
        {"a user who is not listed", "admin", "same", nullptr},
    };
    for (const auto& c : cases) {
        const auto list = LogonUsers::WithNewPassword("root:same;guest:same;", c.user, c.old, "new");
        EXPECT_EQ(list.value_or("<none>"), c.list == nullptr ? "<none>" : c.list) << c.why;
    }
}

class LogonTest : public DialogTest {
protected:
    LogonTest() { gCurrentUser.clear(); }
    ~LogonTest() override { gCurrentUser.clear(); }

    void TypeLogon(const frmLogin& login, const char* name, const char* password) {
        Type(login, "txtUserName", name);
        Type(login, "txtPassword", password);
        Press(login, "cmdOK");
    }
};

TEST_F(LogonTest, AsksForWhatIsMissingAndForABetterPasswordAsOftenAsNeeded) {
    LogonUsers::Write(settings, "root:first;");
    frmLogin login(nullptr, settings, prompts);
    ShowActive(login);
    prompts.Expect(::Box("No User Name", "Please enter your user name", 32));
    TypeLogon(login, "", "first");
    EXPECT_TRUE(HasFocus(login, "txtUserName"));
    prompts.Expect(::Box("No Password", "Please enter a password!", 32));
    TypeLogon(login, "root", "");
    EXPECT_TRUE(HasFocus(login, "txtPassword"));
    for (const char* wrong : {"First", "second", "firs", "first "}) {
        prompts.Expect(::Box("Login", "Invalid Password, try again!", 0));
        TypeLogon(login, "root", wrong);
        EXPECT_EQ(Box(login, "txtPassword").selectedText(), wrong);
        EXPECT_TRUE(login.isVisible());
    }
    EXPECT_EQ(gCurrentUser, "");
    TypeLogon(login, "root", "first");
    EXPECT_TRUE(login.LoginSucceeded);
    EXPECT_FALSE(login.isVisible());
    EXPECT_EQ(gCurrentUser, "root");
}

TEST_F(LogonTest, TheVeryFirstLogonFoundsTheListAndSucceedsInTheSameClick) {
    frmLogin login(nullptr, settings, prompts);
    ShowActive(login);
    const NextDialog cancelled([](QDialog& verify) { Press(verify, "cmdCancel"); });
    TypeLogon(login, "M\xC3\xBCller", "pass");
    EXPECT_TRUE(login.isVisible()) << "not verified";
    EXPECT_EQ(Stored("USER_LI"), "<none>");

    const NextDialog verified([](QDialog& verify) {
        EXPECT_EQ(Text(verify, "txtOldPassword"), "pass");
        Type(verify, "txtPassword", "pass");
        Press(verify, "cmdOK");
    });
    Press(login, "cmdOK");
    EXPECT_EQ(Users(), "M\xC3\xBCller:pass;");
    EXPECT_TRUE(login.LoginSucceeded);

    ShowActive(login);
    Press(login, "cmdCancel");
    EXPECT_FALSE(login.LoginSucceeded) << "cancelled, whatever was before";
    EXPECT_FALSE(login.isVisible());
}

TEST_F(LogonTest, ALetterThatTheStoreLacksOpensNothingAndIsNotStored) {
    LogonUsers::Write(settings, LogonUsers::Entry("root", "\xE2\x82\xAC") + "root:??????;");
    frmLogin login(nullptr, settings, prompts);
    ShowActive(login);
    for (const char* wrong : {"\xD0\xBF\xD0\xB0\xD1\x80\xD0\xBE\xD0\xBB\xD1\x8C", "\xFF?????"}) {
        prompts.Expect(::Box("Login", "Invalid Password, try again!", 0));
        TypeLogon(login, "root", wrong);
    }
    TypeLogon(login, "root", "\xE2\x82\xAC");
    EXPECT_TRUE(login.LoginSucceeded) << "the page has this one";

    const std::string list = Users();
    EXPECT_FALSE(LogonUsers::WithNewPassword(list, "root", "\xD0\xBF?????", "new"));
    for (const char* text : {"\xC5\x81ukasz", "e\xCC\x81"}) {
        EXPECT_EQ(ErrorOf([&] { LogonUsers::WithNewPassword(list, "root", "??????", text); }),
                  Errors::kInvalidCall);
        EXPECT_EQ(ErrorOf([&] { LogonUsers::List({{text, "password"}}); }), Errors::kInvalidCall);
    }
}

TEST_F(LogonTest, ACharacterThatCannotBeScrambledIsToldOf) {
    frmLogin login(nullptr, settings, prompts);
    ShowActive(login);
    const NextDialog verified([](QDialog& verify) {
        Type(verify, "txtPassword", "\xC3\xBF");
        Press(verify, "cmdOK");
    });
    prompts.Expect(::Box("Error#5", "Invalid procedure call or argument", 16));
    TypeLogon(login, "root", "\xC3\xBF");
    EXPECT_EQ(Stored("USER_LI"), "<none>");
}

TEST_F(LogonTest, APasswordIsVerifiedOnlyByTheSameOneTwice) {
    frmLoginVerify verify(nullptr, prompts);
    verify.OldPassword("pass");
    ShowActive(verify);
    EXPECT_TRUE(HasFocus(verify, "txtPassword")) << "the box that is to be filled";
    const auto refuse = [&](const char* old, const char* retyped, Question box, const char* focus) {
        Type(verify, "txtOldPassword", old);
        Type(verify, "txtPassword", retyped);
        prompts.Expect(std::move(box));
        Press(verify, "cmdOK");
        EXPECT_TRUE(HasFocus(verify, focus));
        EXPECT_EQ(Box(verify, focus).selectedText(), Box(verify, focus).text());
        EXPECT_FALSE(verify.Verified);
    };
    const Question blank = ::Box("No password", "Please enter a password in both fields!", 16);
    refuse("pass", "", blank, "txtOldPassword");
    refuse("", "pass", blank, "txtOldPassword");
    refuse("pass", "Pass", ::Box("Verify", "Passwords don't match!", 0), "txtPassword");
    Type(verify, "txtPassword", "pass");
    Press(verify, "cmdOK");
    EXPECT_TRUE(verify.Verified);
    EXPECT_FALSE(verify.isVisible());
}

class UsersTest : public DialogTest {
protected:
    void Add(const frmUsers& users, const std::string& name) {
        prompts.Expect(Input("Add User",
                             "Please enter a valid logon name. Please note that the password and "
                             "the name will be the same."),
                       name);
        Press(users, "btnAdd");
    }
    static QListWidget& List(const frmUsers& users) { return Find<QListWidget>(users, "LSTUsers"); }
    static std::string Names(const frmUsers& users) {
        std::string names;
        for (int row = 0; row < List(users).count(); ++row)
            names += List(users).item(row)->text().toStdString() + " ";
        return names;
    }
};

TEST_F(UsersTest, TheWholeLifeOfAUser) {
    frmUsers users(nullptr, settings, prompts);
    ShowActive(users);
    EXPECT_EQ(List(users).count(), 0);
    EXPECT_FALSE(IsEnabled(users, "btnUpply"));
    EXPECT_FALSE(IsEnabled(users, "FRMEdit"));
    Add(users, "");
    EXPECT_FALSE(IsEnabled(users, "btnUpply")) << "cancelled";
    Add(users, "root");
    EXPECT_TRUE(IsEnabled(users, "btnUpply"));
    EXPECT_EQ(Text(users, "txtPassword"), "root") << "the password is the name until it is changed";
    EXPECT_TRUE(HasFocus(users, "txtName"));
    EXPECT_FALSE(IsEnabled(users, "btnUpdate"));

    Type(users, "txtPassword", "");
    prompts.Expect(::Box("No Password", "Please enter a password of at least one character.", 48));
    Press(users, "btnUpdate");
    Type(users, "txtName", "admin");
    Type(users, "txtPassword", "secret");
    Press(users, "btnUpdate");
    EXPECT_FALSE(IsEnabled(users, "btnUpdate"));
    Add(users, "guest");
    EXPECT_EQ(Names(users), "admin guest ");
    Press(users, "btnUpply");
    EXPECT_FALSE(users.isVisible());
    EXPECT_EQ(Users(), "admin:secret;guest:guest;");
}

TEST_F(UsersTest, ASelectionShowsTheUserAndNoneClearsTheFrame) {
    LogonUsers::Write(settings, "root:first;guest:second;");
    frmUsers users(nullptr, settings, prompts);
    ShowActive(users);
    EXPECT_EQ(Text(users, "txtName"), "") << "nobody is selected at first";
    const QRect guest = List(users).visualItemRect(List(users).item(1));
    QTest::mouseClick(List(users).viewport(), Qt::LeftButton, {}, guest.center());
    EXPECT_EQ(Text(users, "txtName") + " " + Text(users, "txtPassword"), "guest second");
    Type(users, "txtName", "changed");
    EXPECT_TRUE(IsEnabled(users, "btnUpdate"));
    QTest::mouseClick(List(users).viewport(), Qt::LeftButton, {}, guest.center());
    EXPECT_EQ(Text(users, "txtName"), "guest") << "a click on the selected user counts too";
    EXPECT_FALSE(IsEnabled(users, "btnUpdate"));
    List(users).setCurrentRow(-1);
    EXPECT_FALSE(IsEnabled(users, "FRMEdit"));
    EXPECT_EQ(Text(users, "txtName") + Text(users, "txtPassword"), "");
    Press(users, "BTNDelete");
    EXPECT_EQ(Names(users), "root guest ") << "nobody is selected";
}

TEST_F(UsersTest, AreReachedByTheArrowKeysFromTheFirst) {
    LogonUsers::Write(settings, "root:first;guest:second;");
    frmUsers users(nullptr, settings, prompts);
    ShowActive(users);
    QTest::qWait(1);
    ASSERT_TRUE(HasFocus(users, "LSTUsers"));
    QTest::keyClick(&List(users), Qt::Key_Down);
    EXPECT_EQ(Text(users, "txtName"), "root");
    QTest::keyClick(&List(users), Qt::Key_Down);
    EXPECT_EQ(Text(users, "txtName"), "guest");
    EXPECT_TRUE(HasFocus(users, "LSTUsers")) << "the keys stay in the list";
    QTest::mouseClick(List(users).viewport(), Qt::LeftButton, {},
                      List(users).visualItemRect(List(users).item(0)).center());
    EXPECT_EQ(Text(users, "txtName"), "root");
    EXPECT_TRUE(HasFocus(users, "txtName")) << "a click leads on";
}

TEST_F(UsersTest, TheEleventhIsRefusedAndFindsRoomAfterADelete) {
    LogonUsers::Write(settings, "a:1;b:2;c:3;d:4;e:5;f:6;g:7;h:8;i:9;j:10;");
    frmUsers users(nullptr, settings, prompts);
    ShowActive(users);
    prompts.Expect(::Box("Exceeding 10 Users", "Sorry! You can only add 10 users.", 32));
    Press(users, "btnAdd");
    List(users).setCurrentRow(9);
    Press(users, "BTNDelete");
    List(users).setCurrentRow(1);
    Press(users, "BTNDelete");
    EXPECT_EQ(List(users).currentRow(), -1);
    EXPECT_FALSE(IsEnabled(users, "FRMEdit"));
    EXPECT_EQ(Names(users), "a c d e f g h i ");
    Add(users, "k");
    Press(users, "btnUpply");
    EXPECT_EQ(Users(), "a:1;c:3;d:4;e:5;f:6;g:7;h:8;i:9;k:k;") << "each kept its password";
}

TEST_F(UsersTest, AnEmptyNameEndsTheList) {
    LogonUsers::Write(settings, "a:1;b:2;c:3;");
    frmUsers users(nullptr, settings, prompts);
    List(users).setCurrentRow(1);
    Type(users, "txtName", "");
    Press(users, "btnUpdate");
    Press(users, "btnUpply");
    EXPECT_EQ(Users(), "a:1;");
}

TEST_F(UsersTest, TheLastUserStays) {
    LogonUsers::Write(settings, "root:first;");
    frmUsers users(nullptr, settings, prompts);
    ShowActive(users);
    List(users).setCurrentRow(0);
    Press(users, "BTNDelete");
    prompts.Expect(
        ::Box("Can't accept changes!", "You have to have at least one login name and password!", 16));
    Press(users, "btnUpply");
    EXPECT_TRUE(users.isVisible());
    EXPECT_EQ(Users(), "root:first;");
}

TEST_F(UsersTest, ChangesAreDiscardedOnlyWhenAsked) {
    LogonUsers::Write(settings, "root:first;");
    const Question question =
        ::Box("Discard changes?", "Do you want to discard the changes you have made?", 276);
    for (const bool byEscape : {false, true}) {
        frmUsers users(nullptr, settings, prompts);
        ShowActive(users);
        Add(users, "guest");
        const auto close = [&] {
            byEscape ? QTest::keyClick(&users, Qt::Key_Escape) : Press(users, "btnClose");
        };
        prompts.Expect(question, MsgBoxAnswer::No);
        close();
        EXPECT_TRUE(users.isVisible());
        prompts.Expect(question, MsgBoxAnswer::Yes);
        close();
        EXPECT_FALSE(users.isVisible());
        EXPECT_EQ(Users(), "root:first;");
    }
    frmUsers unchanged(nullptr, settings, prompts);
    ShowActive(unchanged);
    Press(unchanged, "btnClose");
    EXPECT_FALSE(unchanged.isVisible()) << "nothing to ask";
}

TEST_F(UsersTest, AStoreThatCannotBeWrittenKeepsTheWindowAndItsChanges) {
    frmUsers users(nullptr, settings, prompts);
    ShowActive(users);
    Add(users, "\xC3\xBF");
    prompts.Expect(::Box("Error#5", "Invalid procedure call or argument", 16));
    Press(users, "btnUpply");
    EXPECT_TRUE(users.isVisible());
    EXPECT_TRUE(IsEnabled(users, "btnUpply"));
}

} // namespace
