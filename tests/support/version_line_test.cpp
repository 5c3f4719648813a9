#include "support/version_line.h"

#include "tests/support/captured_messages.h"

#include <array>
#include <cstring>
#include <gtest/gtest.h>

namespace
{

constexpr const char* expected =
    "uquarndiffmrg                     7.1.1.4 (Tue Nov 9 21:08:13 2010)\n";

class VersionLine : public testing::Test
{
  protected:
    CapturedMessages captured;
};

TEST_F(VersionLine, IsFormattedInto68CharactersAndANul)
{
    std::array<char, 80> buffer{};
    buffer.fill('#');

    const int result = uquarndiffmrg_sprintf_verid(buffer.data());

    EXPECT_STREQ(buffer.data(), expected);
    EXPECT_EQ(std::strlen(buffer.data()), 68U);
    EXPECT_EQ(buffer[69], '#');
    EXPECT_EQ(result, 68);
}

TEST_F(VersionLine, IsPrintedOnStandardOutput)
{
    const int result = uquarndiffmrg_print_verid();

    EXPECT_EQ(uquarndiffmrg_out_msg, expected);
    EXPECT_EQ(uquarndiffmrg_err_msg, "");
    EXPECT_EQ(result, 68);
}

TEST_F(VersionLine, IsTheSameInBothForms)
{
    std::array<char, 69> buffer{};

    uquarndiffmrg_sprintf_verid(buffer.data());
    uquarndiffmrg_print_verid();

    EXPECT_EQ(uquarndiffmrg_out_msg, buffer.data());
}

} // namespace
