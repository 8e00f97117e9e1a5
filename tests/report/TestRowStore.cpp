// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/RowStore.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/SmallFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <limits>
#include <random>

namespace {

using report::Row;
using report::RowStore;

Row Numbered(int number) {
    return {static_cast<double>(number), "Program " + std::to_string(number), {}, number / 8.0};
}

/// Temporary files go to a folder of the test's own.
class RowStoreTest : public testing::Test {
protected:
    TemporaryFolder folder;
    EnvironmentVariable temporary{"TMPDIR", folder.Path()};
};

TEST_F(RowStoreTest, EveryValueComesBackAsItWas) {
    const double most = std::numeric_limits<double>::max();
    const std::vector<Row> rows = {
        {},
        {{}},
        {0.0, -1.0, 1.0, 63.0, 64.0, -64.0, 9007199254740991.0, -9007199254740991.0, 9007199254740992.0},
        {-0.0, 0.5, -1e-300, most, -most, std::numeric_limits<double>::infinity()},
        {std::string(), std::string("\0b\xff", 3), std::string("é ß €")},
        {std::string(300000, 'x'), 1.0},
        {{}, {}, {}},
    };
    for (const std::size_t limit : {std::size_t{0}, std::size_t{1} << 20}) {
        RowStore store(limit);
        for (const Row& row : rows)
            store.Append(row);
        ASSERT_EQ(store.Count(), rows.size());
        Row read = {std::string("what was there"), 7.0};
        for (std::size_t i = rows.size(); i-- > 0;) {
            store.Read(i, read);
            EXPECT_EQ(read, rows[i]) << "row " << i << ", limit " << limit;
        }
    }
}

TEST_F(RowStoreTest, RowsOfTheFileEqualThoseOfMemoryInAnyOrder) {
    constexpr int kRows = 20000;
    // The second goes to the file midway.
    for (const std::size_t limit : {std::size_t{0}, std::size_t{100000}, std::size_t{1} << 30}) {
        RowStore store(limit);
        Row read;
        for (int i = 0; i < kRows; ++i) {
            store.Append(Numbered(i));
            // A report is shown while it is read.
            if (i % 1000 == 999) {
                store.Read(static_cast<std::size_t>(i / 2), read);
                ASSERT_EQ(read, Numbered(i / 2));
            }
        }
        std::mt19937 random(1);
        for (int i = 0; i < kRows; ++i) {
            store.Read(static_cast<std::size_t>(i), read);
            ASSERT_EQ(read, Numbered(i)) << "in turn";
            const auto any = static_cast<int>(random() % kRows);
            store.Read(static_cast<std::size_t>(any), read);
            ASSERT_EQ(read, Numbered(any)) << "at random";
        }
        EXPECT_THROW(store.Read(kRows, read), RunTimeError);
        store.Clear();
        EXPECT_EQ(store.Count(), 0U);
        store.Append(Numbered(3));
        store.Read(0, read);
        EXPECT_EQ(read, Numbered(3));
    }
}

TEST_F(RowStoreTest, NobodyElseCanReadTheFile) {
    RowStore store(0);
    for (int i = 0; i < 1000; ++i)
        store.Append(Numbered(i));
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path())) << "it has no name";
    int files = 0;
    for (const auto& handle : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        if (!read_symlink(handle, gone).string().starts_with(folder.Path()))
            continue;
        struct stat status {};
        ASSERT_EQ(stat(handle.path().c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777U, 0600U);
        ++files;
    }
    EXPECT_EQ(files, 1);
}

TEST_F(RowStoreTest, AFullDiskIsToldAndLeavesWhatWasKept) {
    RowStore store(0);
    std::size_t kept = 0;
    {
        const SmallFiles full(100000);
        EXPECT_EQ(ErrorOf([&] {
                      for (; kept < 100000; ++kept)
                          store.Append(Numbered(static_cast<int>(kept)));
                  }),
                  Errors::kDiskFull);
    }
    ASSERT_EQ(store.Count(), kept);
    Row read;
    for (std::size_t i = 0; i < kept; ++i) {
        store.Read(i, read);
        ASSERT_EQ(read, Numbered(static_cast<int>(i)));
    }
}

TEST_F(RowStoreTest, WithoutATemporaryFolderTheErrorIsTheSystems) {
    const EnvironmentVariable nowhere("TMPDIR", folder.Path("missing"));
    RowStore store(0);
    EXPECT_THROW(for (int i = 0; i < 1000; ++i) store.Append(Numbered(i)), RunTimeError);
}

} // namespace
