#include "viewer/core/search.h"

#include <gtest/gtest.h>

namespace
{

constexpr SearchOptions any_case{};
constexpr SearchOptions exact{.match_case = true};
constexpr SearchOptions once{.wrap = false};

using Match = std::optional<Span>;

TEST(Search, FindsTheNextMatch)
{
    EXPECT_EQ(find_next("ab ab ab", "ab", 1, exact), (Match{{3, 5}}));
}

TEST(Search, AMatchMayBeginRightThere)
{
    EXPECT_EQ(find_next("ab ab", "ab", 3, exact), (Match{{3, 5}}));
}

TEST(Search, GoesOnFromTheBeginning)
{
    EXPECT_EQ(find_next("ab x", "ab", 2, any_case), (Match{{0, 2}}));
    EXPECT_EQ(find_next("ab x", "ab", 2, once), std::nullopt);
}

TEST(Search, FindsThePreviousMatch)
{
    EXPECT_EQ(find_previous("ab ab ab", "ab", 6, exact), (Match{{3, 5}}));
    EXPECT_EQ(find_previous("ab ab ab", "ab", 6, any_case), (Match{{3, 5}}));
}

TEST(Search, GoesOnFromTheEnd)
{
    EXPECT_EQ(find_previous("x ab", "ab", 0, any_case), (Match{{2, 4}}));
    EXPECT_EQ(find_previous("x ab", "ab", 0, exact), (Match{{2, 4}}));
    EXPECT_EQ(find_previous("x ab", "ab", 2, once), std::nullopt);
}

TEST(Search, MatchesEitherCase)
{
    EXPECT_EQ(find_next("xABx", "ab", 0, any_case), (Match{{1, 3}}));
    EXPECT_EQ(find_next("xABx", "ab", 0, exact), std::nullopt);
}

TEST(Search, MatchesEitherCaseBeyondAscii)
{
    EXPECT_EQ(find_next("z\xc3\x84HLT", "\xc3\xa4h", 0, any_case), (Match{{1, 4}}));
}

TEST(Search, AMatchIsAsLongAsItIsInTheText)
{
    // the Kelvin sign has three bytes, its lower case one
    EXPECT_EQ(find_next("5 \xe2\x84\xaa", "k", 0, any_case), (Match{{2, 5}}));
}

TEST(Search, AnEmptyPhraseIsNeverFound)
{
    EXPECT_EQ(find_next("abc", "", 0, any_case), std::nullopt);
    EXPECT_EQ(find_previous("abc", "", 3, any_case), std::nullopt);
}

TEST(Search, AMatchAtTheVeryEndIsFound)
{
    EXPECT_EQ(find_next("abc", "bc", 0, any_case), (Match{{1, 3}}));
    EXPECT_EQ(find_next("abc", "cd", 0, any_case), std::nullopt);
}

} // namespace
