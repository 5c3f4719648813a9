#include "tests/viewer/core/texts.h"
#include "viewer/core/line_matching.h"

#include <gtest/gtest.h>
#include <set>

namespace
{

TEST(NumberLines, EqualLinesHaveOneNumberInAllTexts)
{
    const auto numbers = number_lines(texts_of({"a\nb\na\n", "b\nc\na\n"}), {});

    EXPECT_EQ(numbers, (std::vector<LineNumbers>{{0, 1, 0}, {1, 2, 0}}));
}

TEST(NumberLines, ManyDifferentLinesHaveManyNumbers)
{
    constexpr std::size_t count = 50'000;
    std::string content;
    for (std::size_t line = 0; line < count; ++line) {
        content += std::to_string(line);
        content += '\n';
    }
    const auto numbers = number_lines(texts_of({content, content}), {});

    EXPECT_EQ(std::set(numbers[0].begin(), numbers[0].end()).size(), count);
    EXPECT_EQ(numbers[0], numbers[1]);
}

TEST(NumberLines, ReducedLinesAreEqualOnlyAfterReducing)
{
    const auto numbers = number_lines(texts_of({"A b\n", "ab\n", "a  B\n"}),
                                      {.white_space = WhiteSpace::ignored, .ignore_case = true});

    EXPECT_EQ(numbers, (std::vector<LineNumbers>{{0}, {0}, {0}}));
}

TEST(IsBlank, OnlyWhiteSpaceIsBlank)
{
    EXPECT_TRUE(is_blank(" \t\v\f"));
    EXPECT_TRUE(is_blank(""));
    EXPECT_FALSE(is_blank(" x "));
}

} // namespace
