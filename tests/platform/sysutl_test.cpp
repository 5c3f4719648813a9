#include "platform/sysutl.h"

#include "tests/harness/process_state.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <string>
#include <unistd.h>

namespace
{

std::string own_name()
{
    const passwd* entry = ::getpwuid(::getuid());
    return entry != nullptr ? entry->pw_name : std::to_string(::getuid());
}

TEST(LoginName, IsTheUserDatabasesOne)
{
    EXPECT_EQ(sysutl_myloginname(), own_name());
}

TEST(LoginName, IsNotTakenFromTheEnvironment)
{
    const EnvironmentVariable user("USER", "somebody_else");
    const EnvironmentVariable logname("LOGNAME", "somebody_else");
    EXPECT_EQ(sysutl_myloginname(), own_name());
}

} // namespace
