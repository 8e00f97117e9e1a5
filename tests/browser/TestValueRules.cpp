// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ValueRules.h"
#include "import/Schema.h"
#include "tests/support/Database.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

namespace {

TEST(FormatMegabytes, ShowsWholeMegabytes) {
    struct {
        const char* why;
        ADODB::Value value;
        std::int16_t mode;
        const char* text;
    } cases[] = {
        {"nothing is no size", 0.0, 1, ""},
        {"text that is nothing", std::string("0"), 0, ""},
        {"no number reads as 0", std::string("unknown"), 1, ""},
        {"1.5 rounds to the even 2", 1536.0, 1, "2Mb"},
        {"2.5 rounds to the even 2", 2560.0, 1, "2Mb"},
        {"3.5 rounds to the even 4", 3584.0, 1, "4Mb"},
        {"0.5 rounds to the even 0, but it is a size", 512.0, 1, "0Mb"},
        {"1.505 is cut to 1.50 first", 1541.2, 1, "2Mb"},
        {"2.509 is cut to 2.50, which rounds down", 2569.0, 1, "2Mb"},
        {"2.51 rounds up", 2570.3, 1, "3Mb"},
        {"one byte is a size", 1.0, 0, "0Mb"},
        {"the leading digits of a text count", std::string("2048 KB"), 1, "2Mb"},
        {"a size below nothing", -1536.0, 1, "-2Mb"},
        {"no such unit", 4096.0, 2, "0Mb"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FormatMegabytes(c.value, c.mode), c.text) << c.why;
}

TEST(FormatMegabytes, RefusesWhatIsNoSize) {
    struct {
        const char* why;
        ADODB::Value value;
        int error;
    } cases[] = {
        {"Null is not a size of 0", {}, Errors::kInvalidNull},
        {"more megabytes than 32 bits count", 3e15, Errors::kOverflow},
        {"past any number", std::string("9E999"), Errors::kOverflow},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ErrorOf([&] { FormatMegabytes(c.value, 0); }), c.error) << c.why;
}

/// One row of a table with a column of each type, to be given one value after the other.
class ValueRulesTest : public testing::Test {
protected:
    ValueRulesTest() {
        CreateDatabase(folder.Path("a.mdb"));
        connection = OpenDatabase(folder.Path("a.mdb"));
        RunSQL(*connection, "INSERT INTO Net (COMPUTERNAME) VALUES ('PC1')");
        RunSQL(*connection, "INSERT INTO PC (COMPUTERNAME, ConfID) VALUES ('PC1', 1)");
    }

    /// The text, or "error N".
    std::string Shown(Rule rule, const std::string& column, const std::string& value) {
        RunSQL(*connection, "UPDATE PC SET \"" + column + "\" = " + value);
        ADODB::Recordset row;
        row.Open("SELECT [" + column + "] FROM PC", connection);
        std::string buffer, text;
        const int error =
            ErrorOf([&] { text = DisplayText(rule, row.Fields().Item(std::size_t{0}), buffer); });
        return error == 0 ? text : "error " + std::to_string(error);
    }

    TemporaryFolder folder;
    std::shared_ptr<ADODB::Connection> connection;
};

TEST_F(ValueRulesTest, ShowValuesAsTheirListsNeedThem) {
    const char* const text = "CPU API Name";
    const char* const flag = "CPU DLL FPU";
    const char* const number = "RAM";
    struct {
        const char* why;
        Rule rule;
        const char* column;
        const char* value;
        const char* shown;
    } cases[] = {
        {"a value as it is", Rule::Text, text, "' a|b '", " a|b "},
        {"whole numbers without a point", Rule::Text, number, "4294967296", "4294967296"},
        {"an empty text is a value", Rule::Text, text, "''", ""},
        {"none is not available", Rule::Text, text, "NULL", "n/a"},
        {"a stored date", Rule::Date, text, "'20011102'", "2001-11-02"},
        {"too few digits fill from the right", Rule::Date, text, "'2001'", "0000-20-01"},
        {"what is no date stays as it is", Rule::Date, text, "'1 May 99'", "1 May 99"},
        {"a name can not be missing", Rule::Plain, text, "NULL", "error 94"},
        {"bytes", Rule::SizeBytes, number, "1610612736", "1536Mb"},
        {"kilobytes", Rule::SizeKilobytes, number, "1048576", "1024Mb"},
        {"no size", Rule::SizeKilobytes, number, "NULL", "error 94"},
        {"any number is true", Rule::YesNo, flag, "1", "Yes"},
        {"an unknown wheel is none", Rule::YesNo, flag, "NULL", "No"},
        {"true", Rule::YesNoNotAvailable, flag, "-1", "Yes"},
        {"false is known", Rule::YesNoNotAvailable, flag, "0", "No"},
        {"unknown in one machine's list", Rule::YesNoNotAvailable, flag, "NULL", "n/a"},
        {"the column is a flag", Rule::FlagOrText, flag, "-1", "Yes"},
        {"a flag without a value", Rule::FlagOrText, flag, "NULL", ""},
        {"the column is none", Rule::FlagOrText, text, "NULL", "n/a"},
        {"a flag where sizes are expected", Rule::FlagOrKilobytes, flag, "0", "No"},
        {"a size", Rule::FlagOrKilobytes, number, "2048", "2Mb"},
        {"a missing value is a yes", Rule::NullYes, flag, "NULL", "Yes"},
        {"a value is a no, true or not", Rule::NullYes, flag, "-1", "No"},
        {"nor does false count", Rule::NullYes, flag, "0", "No"},
        {"a speed of 0", Rule::ZeroNotAvailable, text, "'0'", "n/a"},
        {"0 however it is written", Rule::ZeroNotAvailable, text, "' 0.00'", "n/a"},
        {"a speed", Rule::ZeroNotAvailable, text, "'450'", "450"},
        {"text equals no number", Rule::ZeroNotAvailable, text, "'0 MHz'", "0 MHz"},
        {"an empty text neither", Rule::ZeroNotAvailable, text, "''", ""},
        {"nor one past all numbers", Rule::ZeroNotAvailable, text, "'9E999'", "9E999"},
        {"no speed", Rule::ZeroNotAvailable, text, "NULL", "error 94"},
        {"a code", Rule::ProblemOfAll, text, "'16 00 00 00 '", "Yes"},
        {"the code of a working device", Rule::ProblemOfAll, text, "'00 00 00 00 '", "No"},
        {"its last blank counts", Rule::ProblemOfAll, text, "'00 00 00 00'", "Yes"},
        {"empty is another code in the list of all", Rule::ProblemOfAll, text, "''", "Yes"},
        {"no code", Rule::ProblemOfAll, text, "NULL", "No"},
        {"a code", Rule::ProblemOfOne, text, "'16 00 00 00 '", "Yes"},
        {"a working device", Rule::ProblemOfOne, text, "'00 00 00 00 '", "No"},
        {"empty is no problem in one machine's list", Rule::ProblemOfOne, text, "''", "No"},
        {"at the machine itself", Rule::LocalRemote, text, "'L'", "Local"},
        {"L alone is local", Rule::LocalRemote, text, "'l'", "Remote"},
        {"unknown is remote", Rule::LocalRemote, text, "NULL", "Remote"},
        {"bars go, nothing comes", Rule::OfficeNotAvailable, text, "'a|b||'", "ab"},
        {"unknown", Rule::OfficeNotAvailable, text, "NULL", "n/a"},
        {"bars alone", Rule::OfficeNotInstalled, text, "'|'", ""},
        {"none", Rule::OfficeNotInstalled, text, "NULL", "Not Installed"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Shown(c.rule, c.column, c.value), c.shown) << c.why << ": " << c.value;
}

} // namespace
