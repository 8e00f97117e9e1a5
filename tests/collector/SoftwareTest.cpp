// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Software.h"
#include "tests/collector/FakeMachine.h"

#include <gtest/gtest.h>

namespace collector {

TEST(InstalledPackages, AreThoseThatAreReallyThere) {
    const FakeMachine machine;
    machine.File("/var/lib/dpkg/arch", "amd64\ni386\n");
    machine.File("/var/lib/dpkg/status",
                 "Package: zip\nStatus: install ok installed\nVersion: 3.0-13\nArchitecture: amd64\n"
                 "Description: Archiver for .zip files\n more words\n Package: not-a-package\n\n"
                 "Package: removed\nStatus: deinstall ok config-files\nVersion: 1\nArchitecture: amd64\n\n"
                 "Package: broken\nStatus: install ok half-installed\nVersion: 1\n\n"
                 "Package: libc6\nStatus: hold ok installed\nArchitecture: i386\nVersion: 2.36\n\n\n"
                 "Package: base-files\nStatus: install ok installed\nVersion: 12\nArchitecture: all\n"
                 "Description: base\n");
    const std::vector<Package> packages = InstalledPackages(machine.Facts());
    ASSERT_EQ(packages.size(), 3U);
    EXPECT_EQ(packages[0].name, "base-files 12 (base)") << "by name, and the last needs no blank line";
    EXPECT_EQ(packages[0].removal, "apt-get remove base-files");
    EXPECT_EQ(packages[1].name, "libc6 2.36");
    EXPECT_EQ(packages[1].removal, "apt-get remove libc6:i386") << "not this machine's own architecture";
    EXPECT_EQ(packages[2].name, "zip 3.0-13 (Archiver for .zip files)");
}

TEST(InstalledPackages, AreAskedForWhereThereIsNoList) {
    const FakeMachine machine;
    const auto rpm = [](const CommandLine& command, std::chrono::milliseconds) -> std::string {
        if (command.front() != "rpm")
            return {};
        return "gpg-pubkey\t1-2\tgpg(key)\nbash\t5.2-1.fc38\tThe shell\nno tabs\n";
    };
    const std::vector<Package> packages = InstalledPackages(machine.Facts(rpm));
    ASSERT_EQ(packages.size(), 1U) << "a key is no program";
    EXPECT_EQ(packages[0].name, "bash 5.2-1.fc38 (The shell)");
    EXPECT_EQ(packages[0].removal, "rpm -e bash");
}

TEST(DatabaseDrivers, AreTheSectionsOfTheManagersFile) {
    const FakeMachine machine;
    machine.File("/etc/odbcinst.ini",
                 "[ODBC]\nTrace = No\nDriver = /not/a/driver\n\n[PostgreSQL Unicode]\nDescription=x\n"
                 "Driver = /usr/lib/psqlodbcw.so\nDriver64=/usr/lib64/psqlodbcw.so\nSetup=libodbcpsqlS.so\n"
                 "[SQLite3]\nDriver=/usr/lib/libsqlite3odbc.so\n[]\nDriver=/x\n");
    machine.File("/usr/lib/libsqlite3odbc.so.0.99", "");
    machine.Link("/usr/lib/libsqlite3odbc.so", "libsqlite3odbc.so.0.99");
    const std::vector<DatabaseDriver> drivers = DatabaseDrivers(machine.Facts());
    ASSERT_EQ(drivers.size(), 2U);
    EXPECT_EQ(drivers[0].name, "PostgreSQL Unicode");
    EXPECT_EQ(drivers[0].path, "/usr/lib64/psqlodbcw.so");
    EXPECT_EQ(drivers[0].version, "");
    EXPECT_EQ(drivers[1].path, "/usr/lib/libsqlite3odbc.so");
    EXPECT_EQ(drivers[1].version, "0.99") << "as the library's file says";
}

} // namespace collector
