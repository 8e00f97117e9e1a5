// SPDX-License-Identifier: GPL-3.0-or-later
// The collectors' file as it was and as it is after a change, byte for byte, and what of it is read.
#include "platform/errors.h"
#include "platform/profile.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/SmallFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Texts.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <random>

namespace {

using namespace std::string_literals;

TEST(Profile, ReadsAValueAsThePlatformDoes) {
    const struct {
        const char* why;
        std::string bytes, value;
    } cases[] = {
        {"no file", "", "none"},
        {"the key in another section", "[OTHER]\r\nPATH=x\r\n", "none"},
        {"the section without the key", "[STARTUP]\r\nPAT=x\r\nPATHS=y\r\n[NEXT]\r\nPATH=z", "none"},
        {"case does not count", "[StartUp]\nPath=x\n", "x"},
        {"a key that is there has its own value, if only an empty one", "[STARTUP]\r\nPATH=\r\n", ""},
        {"of two keys the first", "[STARTUP]\r\nPATH=x\r\nPATH=y\r\n", "x"},
        {"of two sections the first, though it lacks the key", "[STARTUP]\n[A]\n[STARTUP]\nPATH=y\n", "none"},
        {"blanks around header, key and value", " [ STARTUP ] \r\n\t PATH \t=  a b \t\r\n", "a b"},
        {"an open bracket", "[STARTUP\nPATH=x", "x"},
        {"quotation marks around the value keep its blanks", "[STARTUP]\nPATH=\" a \"\n", " a "},
        {"apostrophes too", "[STARTUP]\nPATH=' a '\n", " a "},
        {"no pair", "[STARTUP]\nPATH=\"a'\n", "\"a'"},
        {"one mark alone", "[STARTUP]\nPATH=\"\n", "\""},
        {"a second equals sign belongs to the value", "[STARTUP]\nPATH=a=b;c\n", "a=b;c"},
        {"a comment is no key", "[STARTUP]\n;PATH=x\n ; PATH=y\nPATH=z\n", "z"},
        {"the code page's letters", "[STARTUP]\nPATH=M\xFCller \x80\n", "M\xC3\xBCller \xE2\x82\xAC"},
        {"a buffer of 512 with its end", "[STARTUP]\nPATH=" + std::string(600, '\xE9'),
         Repeated("\xC3\xA9", 511)},
    };
    setenv("LC_ALL", "C", 1);
    for (const auto& c : cases)
        EXPECT_EQ(Profile(c.bytes).Get("STARTUP", "PATH", "none"), c.value) << c.why;
}

TEST(Profile, ChangesNothingButTheValue) {
    const struct {
        const char* why;
        std::string before, value, after;
    } cases[] = {
        {"an empty file", "", "5", "[S]\r\nK=5\r\n"},
        {"its line, and nothing around it", "; all PCs\r\n\r\n[S]\r\nA=1\r\nK=30\r\nB = 2 \r\n[T]\r\nK=7\r\n",
         "5", "; all PCs\r\n\r\n[S]\r\nA=1\r\nK=5\r\nB = 2 \r\n[T]\r\nK=7\r\n"},
        {"spelling and blanks of header and key", " [s] ; first\n  k =  30\n", "5",
         " [s] ; first\n  k =  5\n"},
        {"the first of two", "[S]\nK=1\nK=2\n", "5", "[S]\nK=5\nK=2\n"},
        {"a shorter value leaves no rest", "[S]\nK=\"a long one\" \nA=1", "", "[S]\nK=\nA=1"},
        {"a last line without its end stays so", "[S]\r\nK=1", "5", "[S]\r\nK=5"},
        {"also where it is no longer the last", "[S]\nA=1", "5", "[S]\nA=1\nK=5"},
        {"and where the section is new", "[T]\r\nA=1", "5", "[T]\r\nA=1\r\n[S]\r\nK=5"},
        {"a header alone", "[S]", "5", "[S]\r\nK=5"},
        {"a new key follows the last one, not the comment of the next section",
         "[S]\nA=1\n\n; about T\n[T]\nB=2\n", "5", "[S]\nA=1\nK=5\n\n; about T\n[T]\nB=2\n"},
        {"in a file of mixed line ends it has its neighbour's", "; x\n[S]\r\nA=1\r\nB=2\n", "5",
         "; x\n[S]\r\nA=1\r\nB=2\nK=5\n"},
        {"a new section has the line end of the file's first", "A=1\n\n", "5", "A=1\n\n[S]\nK=5\n"},
        {"bytes that are no text", "\x00\xFF\n[S]\r\r\n\x80\nK\xFF=\x01\nK=\x00\n"s, "5",
         "\x00\xFF\n[S]\r\r\n\x80\nK\xFF=\x01\nK=5\n"s},
        {"no value makes lines of its own: a file's name can hold any character", "[S]\nK=1\n",
         "a\n[STARTUP]\nDELAYTIMER=60", "[S]\nK=a\n"},
        {"nor ends the text early", "[S]\nK=1\n", "a\0b"s, "[S]\nK=a\n"},
        {"letters that the page lacks", "[S]\nK=1\n", "\xC3\xA9\xE4\xB8\xAD", "[S]\nK=\xE9?\n"},
    };
    setenv("LC_ALL", "C", 1);
    for (const auto& c : cases) {
        Profile profile(c.before);
        profile.Set("S", "K", c.value);
        EXPECT_EQ(profile.Bytes(), c.after) << c.why;
    }
}

/// Lines that a person, another program or a fault could leave, in any order.
std::string RandomBytes(std::mt19937& random) {
    static const std::string kPieces[] = {
        "[S]", "[s",           " [S] ", "[",     "]",     "K=", "k = ", "A=1",    ";",
        "K",   "\r\n",         "\n",    "\n",    "\r",    "=",  "\"",   "'",      " ",
        "\0"s, "\xFF",         "5",     "[T]\n", "K=1\n", "\t", "\n\n", "\r\r\n", "=\n",
        "[]",  "\xEF\xBB\xBF", "x"};
    std::uniform_int_distribution<std::size_t> piece(0, std::size(kPieces) - 1);
    std::uniform_int_distribution<int> count(0, 24);
    std::string bytes;
    for (int left = count(random); left > 0; --left)
        bytes += kPieces[piece(random)];
    return bytes;
}

TEST(Profile, WhateverTheFileHoldsAValueThatIsSetIsReadAndAllElseStays) {
    std::mt19937 random(20011102);
    for (int round = 0; round < 20000; ++round) {
        const std::string before = RandomBytes(random);
        const std::string other = Profile(before).Get("T", "K", "none");
        Profile profile(before);
        profile.Set("S", "K", "42");
        ASSERT_EQ(profile.Get("S", "K", ""), "42") << testing::PrintToString(before);
        ASSERT_EQ(profile.Get("T", "K", "none"), other) << testing::PrintToString(before);
        const std::string once = profile.Bytes();
        profile.Set("S", "K", "42");
        ASSERT_EQ(profile.Bytes(), once) << testing::PrintToString(before);
        ASSERT_EQ(once.empty() || once.back() != '\n', !before.empty() && before.back() != '\n')
            << "the file's end: " << testing::PrintToString(before);
    }
}

TEST(ProfileFile, IsReplacedWholeAndKeepsItsRights) {
    const TemporaryFolder folder;
    const std::string path = folder.WriteFile("MOVANTA.INI", "[S]\nA=1\n");
    chmod(path.c_str(), 0664);
    Profile profile = Profile::Load(path);
    profile.Set("S", "K", "5");
    {
        const SmallFiles full(4);
        EXPECT_THROW(profile.Save(path), RunTimeError);
        EXPECT_EQ(folder.ReadFile("MOVANTA.INI"), "[S]\nA=1\n") << "a full disk leaves the old file";
    }
    profile.Save(path);
    EXPECT_EQ(folder.ReadFile("MOVANTA.INI"), "[S]\nA=1\nK=5\n");
    EXPECT_EQ(folder.Rights("MOVANTA.INI"), 0664U);
}

TEST(ProfileFile, EverybodyCanReadANewOneWhateverTheMask) {
    const TemporaryFolder folder;
    const mode_t mask = umask(077);
    Profile("[S]\nK=5\n").Save(folder.Path("MOVANTA.INI"));
    umask(mask);
    EXPECT_EQ(folder.Rights("MOVANTA.INI"), 0644U);
}

TEST(ProfileFile, StaysAnothersAndIsWrittenWhereNoFileCanBeMade) {
    constexpr uid_t kNobody = 65534;
    const TemporaryFolder folder;
    const std::string path = folder.WriteFile("MOVANTA.INI", "[S]\nA=a long text\n");
    const bool isRoot = geteuid() == 0;
    // The superuser may make files anywhere, and so is somebody else here.
    ASSERT_EQ(chmod(folder.Path().c_str(), isRoot ? 0755 : 0555), 0);
    ASSERT_EQ(chmod(path.c_str(), 0666), 0);
    ASSERT_EQ(isRoot ? seteuid(kNobody) : 0, 0);
    Profile("[S]\nK=5\n").Save(path);
    const int failure = ErrorOf([&] { Profile().Save(folder.Path("NEW.INI")); });
    {
        const SmallFiles full(12);
        EXPECT_THROW(Profile("[S]\nK=something longer\n").Save(path), RunTimeError);
    }
    ASSERT_EQ(isRoot ? seteuid(0) : 0, 0);
    EXPECT_EQ(failure, Errors::kPermissionDenied);
    EXPECT_EQ(folder.ReadFile("MOVANTA.INI"), "[S]\nK=5\n");
    EXPECT_EQ(folder.Names().size(), 1U);
    EXPECT_EQ(folder.Rights("MOVANTA.INI"), 0666U);
    chmod(folder.Path().c_str(), 0700);

    if (!isRoot)
        GTEST_SKIP() << "only the superuser can write to a file of another account's in a folder of his own";
    ASSERT_EQ(chown(path.c_str(), kNobody, kNobody), 0);
    Profile("[S]\nK=6\n").Save(path);
    struct stat status {};
    stat(path.c_str(), &status);
    EXPECT_EQ(status.st_uid, kNobody);
    EXPECT_EQ(folder.ReadFile("MOVANTA.INI"), "[S]\nK=6\n");
}

TEST(ProfileFile, ALinkIsNeitherReadNorWrittenThrough) {
    const TemporaryFolder folder;
    folder.WriteFile("secret", "[STARTUP]\r\nDELAYTIMER=60\r\n");
    const std::string path = folder.Path("MOVANTA.INI");
    std::filesystem::create_symlink(folder.Path("secret"), path);
    EXPECT_EQ(Profile::Load(path).Bytes(), "") << "what it leads to is not copied into the shared folder";
    Profile().Save(path);
    EXPECT_FALSE(std::filesystem::is_symlink(path));
    EXPECT_EQ(folder.ReadFile("secret"), "[STARTUP]\r\nDELAYTIMER=60\r\n");
}

TEST(ProfileFile, WhatIsNoProfileIsNotTakenForAnEmptyOne) {
    const TemporaryFolder folder;
    EXPECT_EQ(Profile::Load(folder.Path("missing")).Bytes(), "");
    EXPECT_EQ(Profile::Load(folder.Path("no folder/missing")).Bytes(), "");
    mkfifo(folder.Path("pipe").c_str(), 0600);
    const std::string large = folder.WriteFile("large", "");
    ASSERT_EQ(truncate(large.c_str(), Profile::kLargest + 1), 0);
    for (const std::string& path : {folder.Path(), folder.Path("pipe"), large})
        EXPECT_THROW(Profile::Load(path), RunTimeError) << path;
}

} // namespace
