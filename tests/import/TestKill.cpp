// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/Schema.h"
#include "platform/files.h"
#include "tests/import/ImportTest.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>

namespace {

TEST_F(ImportTest, AKilledImportLeavesASoundDatabaseWithItsIndexes) {
    constexpr int kRounds = 25;
    constexpr int kMachines = 150;
    for (int i = 0; i < kMachines; ++i)
        Write("PC" + std::to_string(1000 + i) + ".ORG", SmallFile("PC" + std::to_string(1000 + i)));
    const std::string indexes = Rows("SELECT name FROM sqlite_master WHERE type = 'index' ORDER BY name");
    connection->Close();
    std::mt19937 random(5);
    int partial = 0;
    for (int round = 0; round < kRounds; ++round) {
        DeleteDatabase(database);
        CreateDatabase(database);
        const pid_t child = fork();
        if (child == 0) {
            connection->Open();
            Import();
            _exit(0);
        }
        usleep(static_cast<useconds_t>(1000 + random() % 120000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        connection->Open();
        EXPECT_EQ(IntegrityCheck(), "ok");
        EXPECT_EQ(Rows("SELECT name FROM sqlite_master WHERE type = 'index' ORDER BY name"), indexes);
        const int machines = std::stoi(Rows("SELECT COUNT(*) FROM Net"));
        partial += machines > 0 && machines < kMachines ? 1 : 0;
        connection->Close();
    }
    EXPECT_GT(partial, 0) << "no kill fell into an import";
    connection->Open();
}

} // namespace
