#include "cmdline/command_line_info.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <iterator>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

namespace
{

using Words = std::vector<std::string>;

TEST(CommandLineModel, StartsEmpty)
{
    const DiffMrgCommandLineInfo fresh{};
    EXPECT_FALSE(fresh.parse_error || fresh.merge_mode || fresh.blank_ignore);
    EXPECT_FALSE(fresh.favor_contrib_given || fresh.encoding_given);
    EXPECT_TRUE(fresh.contributors.empty() && fresh.fnames.empty());
    EXPECT_EQ(fresh.out_pname + fresh.favor_contrib + fresh.encoding + fresh.type_manager, "");
}

TEST(CommandLineModel, KeepsTheOrderOfItsFields)
{
    using Info = DiffMrgCommandLineInfo;
    static_assert(std::is_standard_layout_v<Info>);
    constexpr std::size_t offsets[] = {
        offsetof(Info, parse_state),
        offsetof(Info, parse_error),
        offsetof(Info, merge_mode),
        offsetof(Info, blank_ignore),
        offsetof(Info, favor_contrib_given),
        offsetof(Info, spare_flag),
        offsetof(Info, encoding_given),
        offsetof(Info, contributors),
        offsetof(Info, out_pname),
        offsetof(Info, favor_contrib),
        offsetof(Info, fnames),
        offsetof(Info, encoding),
        offsetof(Info, type_manager),
    };
    EXPECT_EQ(offsets[0], 0U);
    for (std::size_t i = 1; i < std::size(offsets); ++i)
        EXPECT_LT(offsets[i - 1], offsets[i]) << "field " << i;
}

TEST(CommandLineModel, NumbersTheStatesFromTheRestingOne)
{
    EXPECT_EQ(ARG_CONTRIBUTOR, 0);
    EXPECT_EQ(ARG_OUT, 1);
    EXPECT_EQ(ARG_BASE, 2);
    EXPECT_EQ(ARG_FNAME, 3);
    EXPECT_EQ(ARG_FAVOR_CONTRIB, 4);
    EXPECT_EQ(ARG_ENCODING, 5);
}

TEST(CommandLineModel, CountsContributorsAndDisplayNames)
{
    DiffMrgCommandLineInfo command_line{};
    command_line.add_contributor("a");
    command_line.add_contributor("b");
    command_line.add_fname("f");
    EXPECT_EQ(command_line.no_of_contributors(), 2U);
    EXPECT_EQ(command_line.no_of_fnames(), 1U);
}

TEST(CommandLineModel, AddOutSelectsMergingAndReplacesThePath)
{
    DiffMrgCommandLineInfo command_line{};
    command_line.add_out("one");
    command_line.add_out("two");
    EXPECT_TRUE(command_line.merge_mode);
    EXPECT_EQ(command_line.out_pname, "two");
}

TEST(CommandLineModel, FavouredContributorAndEncodingAreReplaced)
{
    DiffMrgCommandLineInfo command_line{};
    command_line.add_favor_contrib("1");
    command_line.add_favor_contrib("2");
    command_line.add_encoding("utf-8");
    command_line.add_encoding("utf-16le");
    EXPECT_EQ(command_line.favor_contrib, "2");
    EXPECT_EQ(command_line.encoding, "utf-16le");
}

TEST(CommandLineModel, KeepsCopiesOfTheTexts)
{
    DiffMrgCommandLineInfo command_line{};
    char text[] = "before";
    command_line.add_contributor(text);
    command_line.add_fname(text);
    text[0] = 'X';
    EXPECT_EQ(command_line.contributors, Words{"before"});
    EXPECT_EQ(command_line.fnames, Words{"before"});
}

struct UncCase {
    const char* name;
    const char* path;
    bool expected;
};

void PrintTo(const UncCase& unc, std::ostream* out)
{
    *out << unc.name;
}

class UncPath : public testing::TestWithParam<UncCase>
{};

TEST_P(UncPath, BeginsWithTwoBackslashesAndGoesOn)
{
    EXPECT_EQ(DiffMrgCommandLineInfo{}.is_unc_path(GetParam().path), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(All, UncPath,
                         testing::Values(UncCase{"shortest", R"(\\a)", true},
                                         UncCase{"three_backslashes", R"(\\\)", true},
                                         UncCase{"long", R"(\\host\share)", true},
                                         UncCase{"too_short", R"(\\)", false},
                                         UncCase{"one_backslash", R"(\ab)", false},
                                         UncCase{"backslash_second", R"(a\\b)", false},
                                         UncCase{"slashes", "//host", false},
                                         UncCase{"empty", "", false}));

} // namespace
