#include "tests/viewer/core/texts.h"
#include "viewer/core/line_pairing.h"

#include <gtest/gtest.h>

namespace
{

LineRows rows_of_all(const Texts& texts)
{
    std::vector<LineRange> lines;
    lines.reserve(texts.size());
    for (const auto& text : texts)
        lines.push_back({0, text->line_count()});
    return LinePairing(texts).rows_of(lines);
}

LineRows rows(std::initializer_list<std::string_view> contents)
{
    return rows_of_all(texts_of(contents));
}

TEST(LinePairing, LinesWithMostWordsInCommonShareARow)
{
    EXPECT_EQ(rows({"one two three\n", "new\nonly\none two four\n"}), (LineRows{{2}, {0, 1, 2}}));
}

TEST(LinePairing, LinesThatAreLikeNothingFillTheRowsFromTheTop)
{
    EXPECT_EQ(rows({"a\nb\n", "x\ny\nz\n"}), LineRows());
    EXPECT_EQ(rows({"a\none two\n", "x\ny\nz\none two!\n"}), (LineRows{{0, 3}, {0, 1, 2, 3}}));
}

TEST(LinePairing, LinesThatPairAsTheyStandNeedNoRows)
{
    EXPECT_EQ(rows({"one two\nthree four\n", "one 2 two\nthree 4 four\n"}), LineRows());
}

TEST(LinePairing, OrderIsKept)
{
    EXPECT_EQ(rows({"one two\nthree four\n", "three four!\none two!\nfive\n"}),
              (LineRows{{0, 1}, {1, 2, 3}}));
}

TEST(LinePairing, WhiteSpaceDoesNotMakeLinesAlike)
{
    EXPECT_EQ(rows({"        a\n", "        b\n        c\n"}), LineRows());
}

TEST(LinePairing, ALineIsPairedInSeveralContributors)
{
    EXPECT_EQ(rows({"one two\n", "x\none two!\n", "x\ny\none two?\n"}),
              (LineRows{{2}, {0, 2}, {0, 1, 2}}));
}

TEST(LinePairing, ABlockThatWouldTakeLongIsLeftAsItStands)
{
    std::string many = "like\n";
    for (int line = 0; line < 1500; ++line)
        many += "line " + std::to_string(line) + "\n";

    EXPECT_EQ(rows({many, "before\n" + many}), LineRows());
}

TEST(LinePairing, SoMuchIsDoneAndNoMore)
{
    std::string many;
    for (int line = 0; line < 100; ++line)
        many += "line " + std::to_string(line) + "\n";
    const Texts texts = texts_of({many, "before\n" + many});
    LinePairing pairing(texts);
    const std::vector<LineRange> lines{{0, 100}, {0, 101}};
    ASSERT_FALSE(pairing.rows_of(lines).empty());

    bool stops = false;
    for (int block = 0; block < 1000 && !stops; ++block)
        stops = pairing.rows_of(lines).empty();

    EXPECT_TRUE(stops);
}

} // namespace
