// The user database is replaced here: the linker prefers this program's getpwuid.
#include "platform/sysutl.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <string>
#include <unistd.h>

namespace
{

passwd* database_entry = nullptr;
uid_t asked_for = 0;

} // namespace

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the system's is reserved
passwd* getpwuid(uid_t user)
{
    asked_for = user;
    return database_entry;
}

namespace
{

TEST(UserDatabase, WithoutAnEntryGivesTheUserIdInDecimal)
{
    database_entry = nullptr;
    EXPECT_EQ(sysutl_myloginname(), std::to_string(::getuid()));
}

TEST(UserDatabase, IsAskedForTheRealUser)
{
    char name[] = "alice";
    passwd entry{};
    entry.pw_name = name;
    database_entry = &entry;
    asked_for = ::getuid() + 1;

    EXPECT_STREQ(sysutl_myloginname(), "alice");

    EXPECT_EQ(asked_for, ::getuid());
    database_entry = nullptr;
}

} // namespace
