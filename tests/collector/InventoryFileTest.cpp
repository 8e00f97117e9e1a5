// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/InventoryFile.h"
#include "tests/collector/FakeMachine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iterator>
#include <system_error>

namespace collector {

namespace {

using testing::ElementsAre;

class InventoryFileTest : public testing::Test {
protected:
    std::vector<std::string> Names() const { return Sources(shared.At("/")).List("/INF"); }
    std::string Text(const std::string& name) const { return Sources(shared.At("/")).Read("/INF/" + name); }
    void Write(const std::string& text) const { WriteInventory(shared.At("/INF"), "PC7", text); }

    FakeMachine shared;
};

} // namespace

TEST_F(InventoryFileTest, TheFirstRunMakesTheBaselineAndLaterRunsKeepIt) {
    Write("first");
    EXPECT_THAT(Names(), ElementsAre("PC7.INF", "PC7.ORG")) << "and nothing passing is left behind";
    Write("second");
    EXPECT_EQ(Text("PC7.ORG"), "first");
    EXPECT_EQ(Text("PC7.INF"), "second");
}

TEST_F(InventoryFileTest, NamesInAnotherCaseAreTheSameFiles) {
    shared.File("/INF/pc7.org", "baseline");
    shared.File("/INF/Pc7.Inf", "old");
    shared.File("/INF/PC77.ORG", "another machine");
    shared.File("/INF/pc7.pnf", "");
    Write("new");
    EXPECT_THAT(Names(), ElementsAre("PC77.ORG", "Pc7.Inf", "pc7.org", "pc7.pnf"));
    EXPECT_EQ(Text("pc7.org"), "baseline");
    EXPECT_EQ(Text("Pc7.Inf"), "new");
}

TEST_F(InventoryFileTest, AReaderThatHasTheOldFileOpenKeepsItWhole) {
    Write("old and long enough to be cut");
    std::ifstream reader(shared.At("/INF/PC7.INF"), std::ios::binary);
    Write("new");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "old and long enough to be cut");
}

TEST_F(InventoryFileTest, AFailureNamesItsPlaceAndLeavesNothingBehind) {
    shared.File("/INF", "a file where the folder should be");
    try {
        Write("text");
        FAIL() << "a folder that can't be made went unnoticed";
    } catch (const std::system_error& failure) {
        EXPECT_THAT(failure.what(), testing::HasSubstr("INF"));
    }
    const FakeMachine other;
    other.Folder("/INF/PC7.INF/in the way");
    EXPECT_THROW(WriteInventory(other.At("/INF"), "PC7", "text"), std::system_error);
    EXPECT_THAT(Sources(other.At("/")).List("/INF"), ElementsAre("PC7.INF", "PC7.ORG"));
}

} // namespace collector
