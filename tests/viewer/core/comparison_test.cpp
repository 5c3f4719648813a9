#include "tests/viewer/core/texts.h"
#include "viewer/core/comparison.h"

#include <gtest/gtest.h>

namespace
{

Comparison compared(std::initializer_list<std::string_view> contents,
                    const CompareOptions& options = {})
{
    return *compare(texts_of(contents), options);
}

using Changes = std::vector<Change>;
using Ranges = std::vector<LineRange>;

TEST(Compare, EqualTextsAreOneEqualBlock)
{
    const Comparison comparison = compared({"a\nb\n", "a\nb\n"});

    EXPECT_EQ(comparison.difference_count(), 0U);
    ASSERT_EQ(comparison.blocks().size(), 1U);
    EXPECT_EQ(comparison.blocks()[0].kind, BlockKind::equal);
    EXPECT_EQ(comparison.row_count(), 2U);
}

TEST(Compare, EmptyTextsHaveNoRows)
{
    EXPECT_EQ(compared({"", ""}).row_count(), 0U);
}

TEST(Compare, AChangedLineIsChangedOnBothSides)
{
    const Comparison comparison = compared({"a\nb\nc\n", "a\nB\nc\n"});

    ASSERT_EQ(comparison.difference_count(), 1U);
    EXPECT_EQ(comparison.difference(0).lines, (Ranges{{1, 2}, {1, 2}}));
    EXPECT_EQ(comparison.difference(0).changes, (Changes{Change::changed, Change::changed}));
}

TEST(Compare, LinesOfTheFirstAloneAreAddedThereAndMissingInTheOther)
{
    const Comparison comparison = compared({"a\nb\nc\n", "a\nc\n"});

    ASSERT_EQ(comparison.difference_count(), 1U);
    EXPECT_EQ(comparison.difference(0).changes, (Changes{Change::added, Change::missing}));
}

TEST(Compare, LinesOfTheOtherAloneAreMissingInTheFirst)
{
    EXPECT_EQ(compared({"a\n", "a\nb\n"}).difference(0).changes,
              (Changes{Change::missing, Change::added}));
}

TEST(Compare, AContributorLikeTheFirstHasNoChange)
{
    EXPECT_EQ(compared({"a\nb\n", "a\nb\n", "a\nc\n"}).difference(0).changes,
              (Changes{Change::changed, Change::none, Change::changed}));
}

TEST(Compare, DifferencesOfSeveralInTheSamePlaceAreOne)
{
    const Comparison comparison = compared({"a\nb\nc\n", "a\nB\nc\n", "a\nb\nb\nB\nc\n", "c\n"});

    ASSERT_EQ(comparison.difference_count(), 1U);
    EXPECT_EQ(comparison.difference(0).lines, (Ranges{{0, 2}, {0, 2}, {0, 4}, {0, 0}}));
    EXPECT_EQ(comparison.difference(0).row_count, 4U);
}

TEST(Compare, AGapStandsBesideLinesThatOthersHaveMore)
{
    const Comparison comparison = compared({"a\nz\n", "a\nb\nc\nz\n"});

    EXPECT_EQ(comparison.row_count(), 4U);
    EXPECT_EQ(comparison.line_at(1, 0), std::nullopt);
    EXPECT_EQ(comparison.line_at(2, 1), 2U);
    EXPECT_EQ(comparison.line_at(3, 0), 1U);
    EXPECT_EQ(comparison.line_at(3, 1), 3U);
}

TEST(Compare, TheRowOfALineIsFound)
{
    const Comparison comparison = compared({"a\nz\n", "a\nb\nc\nz\n"});

    EXPECT_EQ(comparison.row_of(0, 0), 0U);
    EXPECT_EQ(comparison.row_of(0, 1), 3U);
    EXPECT_EQ(comparison.row_of(1, 2), 2U);
}

/** The rows of a contributor show all its lines, in order. */
void expect_all_lines(const Comparison& comparison, std::size_t contributor, std::size_t lines)
{
    std::size_t next = 0;
    for (std::size_t row = 0; row < comparison.row_count(); ++row) {
        const auto line = comparison.line_at(row, contributor);
        if (!line)
            continue;
        ASSERT_EQ(*line, next++);
        ASSERT_EQ(comparison.row_of(contributor, *line), row);
    }
    ASSERT_EQ(next, lines);
}

TEST(Compare, RowsShowAllLinesInOrder)
{
    TripleMaker maker(7);
    for (int count = 0; count < 300; ++count) {
        const Texts texts = maker.make().texts();
        const Comparison comparison = *compare(texts, {});
        for (std::size_t index = 0; index < texts.size(); ++index)
            expect_all_lines(comparison, index, texts[index]->line_count());
    }
}

TEST(Compare, EqualBlocksHoldEqualLines)
{
    TripleMaker maker(8);
    for (int count = 0; count < 300; ++count) {
        const Texts texts = maker.make().texts();
        const Comparison comparison = *compare(texts, {});
        for (const Block& block : comparison.blocks())
            for (std::size_t index = 1; index < texts.size(); ++index) {
                const bool equal =
                    texts[0]->lines(block.lines[0]) == texts[index]->lines(block.lines[index]);
                ASSERT_EQ(equal, block.changes[index] == Change::none);
            }
    }
}

TEST(Compare, DifferencesAreFoundFromARow)
{
    const Comparison comparison = compared({"a\nb\nc\nd\ne\n", "A\nb\nC\nd\nE\n"});

    EXPECT_EQ(comparison.next_difference(0), 1U);
    EXPECT_EQ(comparison.next_difference(4), std::nullopt);
    EXPECT_EQ(comparison.previous_difference(4), 1U);
    EXPECT_EQ(comparison.previous_difference(0), std::nullopt);
    EXPECT_EQ(comparison.difference_at(2), 1U);
    EXPECT_EQ(comparison.difference_at(3), std::nullopt);
    EXPECT_EQ(compared({"a\nb\n", "a\nc\n"}).difference_at(0), std::nullopt);
}

TEST(Compare, BeforeComparingAllLinesStandFromTheTop)
{
    const Comparison comparison = Comparison::before_comparing(texts_of({"a\nb\n", "c\n"}));

    EXPECT_EQ(comparison.row_count(), 2U);
    EXPECT_EQ(comparison.line_at(1, 0), 1U);
    EXPECT_EQ(comparison.line_at(1, 1), std::nullopt);
    EXPECT_EQ(comparison.difference_count(), 0U);
}

TEST(Compare, AStopGivesNothing)
{
    std::stop_source stop;
    stop.request_stop();

    EXPECT_FALSE(compare(texts_of({"a", "b"}), {}, stop.get_token()).has_value());
}

struct Ignoring {
    const char* what;
    CompareOptions options;
    const char* first;
    const char* second;
    std::size_t differences;
};

class Options : public testing::TestWithParam<Ignoring>
{};

TEST_P(Options, DecideWhatIsADifference)
{
    EXPECT_EQ(
        compared({GetParam().first, GetParam().second}, GetParam().options).difference_count(),
        GetParam().differences)
        << GetParam().what;
}

constexpr CompareOptions amount{.white_space = WhiteSpace::amount_ignored};
constexpr CompareOptions all_white{.white_space = WhiteSpace::ignored};
constexpr CompareOptions letter_case{.ignore_case = true};
constexpr CompareOptions line_ends{.ignore_line_ends = true};
constexpr CompareOptions blank_lines{.ignore_blank_lines = true};

INSTANTIATE_TEST_SUITE_P(
    Each, Options,
    testing::Values(
        Ignoring{"white space counts", {}, "a b\n", "a  b\n", 1},
        Ignoring{"its amount", amount, "a \tb\n", "a b\n", 0},
        Ignoring{"its amount at the end", amount, "a\n", "a  \n", 0},
        Ignoring{"its being there", amount, "ab\n", "a b\n", 1},
        Ignoring{"its being there at the beginning", amount, "ab\n", "  ab\n", 1},
        Ignoring{"all of it", all_white, "ab\n", "\ta b \n", 0},
        Ignoring{"not the rest", all_white, "ab\n", "a c\n", 1},
        Ignoring{"case counts", {}, "a\n", "A\n", 1},
        Ignoring{"case", letter_case, "aBc\n", "AbC\n", 0},
        Ignoring{"case beyond ASCII", letter_case, "\xc3\xa4\xce\xa9\n", "\xc3\x84\xcf\x89\n", 0},
        Ignoring{"case and white space stay apart", letter_case, "a b\n", "AB\n", 1},
        Ignoring{"line ends count", {}, "a\n", "a\r\n", 1},
        Ignoring{"line ends", line_ends, "a\nb\r\nc\n", "a\r\nb\rc", 0},
        Ignoring{"line ends count with others ignored", letter_case, "a\n", "A\r\n", 1},
        Ignoring{"blank lines count", {}, "a\nb\n", "a\n\nb\n", 1},
        Ignoring{"blank lines", blank_lines, "a\nb\n", "a\n \t\n\nb\n", 0},
        Ignoring{"blank lines with a changed one", blank_lines, "a\nb\n", "a\n\nc\n", 1}));

TEST(Compare, IgnoredBlankLinesStillHaveRows)
{
    const Comparison comparison = compared({"a\nb\n", "a\n\nb\n"}, blank_lines);

    EXPECT_EQ(comparison.row_count(), 3U);
    EXPECT_EQ(comparison.block_at(1).kind, BlockKind::ignored);
    EXPECT_EQ(comparison.line_at(2, 0), 1U);
}

std::string sentence_for(const Text& first, const Text& second)
{
    const char* sentence = likeness_sentence(
        likeness({std::make_shared<const Text>(first), std::make_shared<const Text>(second)}));
    return sentence != nullptr ? sentence : "";
}

TEST(Likeness, IsToldInASentence)
{
    EXPECT_EQ(sentence_for({"a\n", 0, false}, {"a\n", 0, false}), "The files are identical.");
    EXPECT_EQ(sentence_for({"a\n", 0, false}, {"b\n", 0, false}), "");
    EXPECT_EQ(sentence_for({"a\n", 0, false}, {"a\nb", 0, false}), "");
    EXPECT_EQ(sentence_for({"a\nb\n", 0, false}, {"a\r\nb\n", 0, false}),
              "The files differ only in line ends.");
    EXPECT_EQ(sentence_for({"a\n", 0, false}, {"a", 0, false}),
              "The files differ only in line ends.");
    EXPECT_EQ(sentence_for({"a\n", 0, false}, {"a\n", 0, true}),
              "The files differ only in the byte-order mark.");
    EXPECT_EQ(sentence_for({"a\n", 0, false}, {"a\r", 0, true}),
              "The files differ only in line ends and in the byte-order mark.");
    EXPECT_EQ(sentence_for({"a\n", 0, false}, {"a\n", 1, false}),
              "The files differ only in encoding.");
    EXPECT_EQ(sentence_for({"a\n", 0, false}, {"a\r\n", 1, false}),
              "The files differ only in encoding and line ends.");
    EXPECT_EQ(sentence_for({"a\n", 0, false}, {"a\n", 1, true}),
              "The files differ only in encoding and byte-order mark.");
    EXPECT_EQ(sentence_for({"a\n", 0, false}, {"a\r", 1, true}),
              "The files differ only in encoding, line ends and byte-order mark.");
}

TEST(Likeness, OneOfThreeThatDiffersCounts)
{
    EXPECT_FALSE(likeness(texts_of({"a\n", "a\n", "a\r"})).same_line_ends);
    EXPECT_FALSE(likeness(texts_of({"a\n", "a\n", "b\n"})).same_characters);
}

} // namespace
