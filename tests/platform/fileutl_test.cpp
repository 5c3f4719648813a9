#include "platform/fileutl.h"

#include "tests/harness/process_state.h"

#include <gtest/gtest.h>

namespace
{

struct Found {
    int result;
    std::string text;

    bool operator==(const Found&) const = default;
};

Found temporary_directory(const std::optional<std::string>& tmpdir, int size = 4096)
{
    const EnvironmentVariable variable("TMPDIR", tmpdir);
    std::string buffer(5000, '#');
    const int result = fileutl_get_tmpdir(0, buffer.data(), size, 0);
    return {result, buffer.substr(0, buffer.find('\0'))};
}

TEST(TemporaryDirectory, IsTmpWithoutTheVariable)
{
    EXPECT_EQ(temporary_directory(std::nullopt), (Found{0, "/tmp"}));
}

TEST(TemporaryDirectory, IsTmpWithAnEmptyVariable)
{
    EXPECT_EQ(temporary_directory(""), (Found{0, "/tmp"}));
}

TEST(TemporaryDirectory, IsWhatTheVariableNamesWhetherItExistsOrNot)
{
    EXPECT_EQ(temporary_directory("/no where"), (Found{0, "/no where"}));
}

TEST(TemporaryDirectory, LosesItsTrailingSlashes)
{
    EXPECT_EQ(temporary_directory("/scratch/"), (Found{0, "/scratch"}));
    EXPECT_EQ(temporary_directory("/scratch//"), (Found{0, "/scratch"}));
}

TEST(TemporaryDirectory, StaysTheRoot)
{
    EXPECT_EQ(temporary_directory("/"), (Found{0, "/"}));
    EXPECT_EQ(temporary_directory("//"), (Found{0, "/"}));
}

TEST(TemporaryDirectory, MayFillTheBufferToItsNul)
{
    const std::string longest(4095, 'x');
    EXPECT_EQ(temporary_directory(longest), (Found{0, longest}));
}

TEST(TemporaryDirectory, ThatFitsOnlyWithoutItsTrailingSlashFits)
{
    const std::string longest(4095, 'x');
    EXPECT_EQ(temporary_directory(longest + "/"), (Found{0, longest}));
}

TEST(TemporaryDirectory, ThatDoesNotFitIsAnEmptyTextAndNeverATruncatedOne)
{
    EXPECT_EQ(temporary_directory(std::string(4096, 'x')), (Found{-1, ""}));
    EXPECT_EQ(temporary_directory("/tmp", 4), (Found{-1, ""}));
}

TEST(TemporaryDirectory, DoesNotTouchABufferOfNoSize)
{
    EXPECT_EQ(temporary_directory("/tmp", 0), (Found{-1, std::string(5000, '#')}));
    EXPECT_EQ(temporary_directory("/tmp", -1), (Found{-1, std::string(5000, '#')}));
}

} // namespace
