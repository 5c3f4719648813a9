#include "tests/viewer/core/texts.h"
#include "viewer/core/merge_result.h"

#include <gtest/gtest.h>
#include <random>

namespace
{

MergeResult result_of(const Texts& texts, bool first_is_ancestor = true)
{
    return {texts, *plan_merge(texts, first_is_ancestor)};
}

/** Line 1 is a conflict; line 5 is changed by the second side alone. */
MergeResult one_conflict()
{
    return result_of(texts_of({"a\nb\nc\nd\ne\n", "a\nX\nX2\nc\nd\ne\n", "a\nY\nc\nd\nE\n"}));
}

constexpr std::size_t conflict = 1;

using Order = std::vector<std::size_t>;

TEST(MergeResult, BeginsWithWhatResolvedItself)
{
    const MergeResult result = one_conflict();

    EXPECT_EQ(result.conflict_count(), 1U);
    EXPECT_EQ(result.resolved_count(), 0U);
    EXPECT_FALSE(result.has_unsaved_work());
    EXPECT_EQ(result.bytes(), "a\nc\nd\nE\n");
}

TEST(MergeResult, AConflictIsARowOfItsOwn)
{
    const MergeResult result = one_conflict();

    EXPECT_EQ(result.row_count(), 6U); // one is behind the last end of line
    EXPECT_EQ(result.row(0).content, "a");
    EXPECT_EQ(result.row(1).origin, RowOrigin::unresolved);
    EXPECT_EQ(result.row(1).region, conflict);
    EXPECT_EQ(result.row(4).content, "E");
    EXPECT_EQ(result.row(4).contributor, 2U);
    EXPECT_EQ(result.row(5).origin, RowOrigin::end);
}

TEST(MergeResult, ARegionTakesTheLinesOfAContributor)
{
    MergeResult result = one_conflict();

    result.choose(conflict, {1});

    EXPECT_TRUE(result.is_resolved());
    EXPECT_TRUE(result.has_unsaved_work());
    EXPECT_EQ(result.bytes(), "a\nX\nX2\nc\nd\nE\n");
    EXPECT_EQ(result.choice(conflict), (RegionChoice{true, false, {1}}));
    EXPECT_EQ(result.rows_of(conflict), (LineRange{1, 3}));
}

TEST(MergeResult, ARegionTakesSeveralInAnOrder)
{
    MergeResult result = one_conflict();

    result.choose(conflict, {2, 1});

    EXPECT_EQ(result.bytes(), "a\nY\nX\nX2\nc\nd\nE\n");
    EXPECT_EQ(result.choice(conflict).contributors, (Order{2, 1}));
}

TEST(MergeResult, ContributorsCanBeAddedOneByOne)
{
    MergeResult result = one_conflict();

    result.choose_also(conflict, 2);
    result.choose_also(conflict, 0);

    EXPECT_EQ(result.choice(conflict).contributors, (Order{2, 0}));
}

TEST(MergeResult, ARegionCanBeEmpty)
{
    MergeResult result = one_conflict();

    result.choose(conflict, {});

    EXPECT_EQ(result.choice(conflict), (RegionChoice{true, false, {}}));
    EXPECT_TRUE(result.is_resolved());
    EXPECT_EQ(result.bytes(), "a\nc\nd\nE\n");
    EXPECT_TRUE(result.rows_of(conflict).empty());
}

TEST(MergeResult, WhatResolvedItselfCanBeChosenOtherwise)
{
    MergeResult result = one_conflict();

    result.choose(3, {0});

    EXPECT_EQ(result.bytes(), "a\nc\nd\ne\n");
}

TEST(MergeResult, EveryChoiceHasAWayBack)
{
    MergeResult result = one_conflict();
    result.choose(conflict, {1});

    result.put_back(conflict);

    EXPECT_FALSE(result.is_resolved());
    EXPECT_FALSE(result.choice(conflict).resolved);
}

TEST(MergeResult, AllUnresolvedTakeOneContributorInOneStep)
{
    MergeResult result =
        result_of(texts_of({"a\n1\n2\n3\n4\nb\n", "x\n1\n2\n3\n4\nx\n", "y\n1\n2\n3\n4\ny\n"}));
    ASSERT_EQ(result.conflict_count(), 2U);

    result.choose_for_unresolved(2);
    EXPECT_EQ(result.bytes(), "y\n1\n2\n3\n4\ny\n");

    result.undo();
    EXPECT_EQ(result.resolved_count(), 0U);
}

TEST(MergeResult, UnresolvedRegionsAreFoundFromARow)
{
    MergeResult result =
        result_of(texts_of({"a\n1\n2\n3\n4\nb\n", "x\n1\n2\n3\n4\nx\n", "y\n1\n2\n3\n4\ny\n"}));

    EXPECT_EQ(result.next_unresolved(0), 2U);
    EXPECT_EQ(result.next_unresolved(5), std::nullopt);
    EXPECT_EQ(result.previous_unresolved(5), 0U);
    EXPECT_EQ(result.previous_unresolved(0), std::nullopt);
}

TEST(MergeResult, StepsAreUndoneAndRedone)
{
    MergeResult result = one_conflict();
    result.choose(conflict, {1});
    result.choose(conflict, {2});

    EXPECT_EQ(result.undo(), 1U);
    EXPECT_EQ(result.choice(conflict).contributors, Order{1});
    result.undo();
    EXPECT_FALSE(result.can_undo());
    EXPECT_FALSE(result.has_unsaved_work());

    EXPECT_EQ(result.redo(), 1U);
    result.redo();
    EXPECT_FALSE(result.can_redo());
    EXPECT_EQ(result.choice(conflict).contributors, Order{2});
}

TEST(MergeResult, ANewStepEndsRedo)
{
    MergeResult result = one_conflict();
    result.choose(conflict, {1});
    result.undo();

    result.choose(conflict, {2});

    EXPECT_FALSE(result.can_redo());
}

TEST(MergeResult, ASavedStateIsNoWorkToLose)
{
    MergeResult result = one_conflict();
    result.choose(conflict, {1});
    result.mark_saved();
    EXPECT_FALSE(result.has_unsaved_work());

    result.undo();
    EXPECT_TRUE(result.has_unsaved_work());
    result.choose(conflict, {2});
    EXPECT_TRUE(result.has_unsaved_work());
}

TEST(MergeResult, TypingGoesIntoALine)
{
    MergeResult result = one_conflict();

    EXPECT_EQ(result.replace({0, 1}, {0, 1}, "bc"), (ResultPosition{0, 3}));

    EXPECT_EQ(result.row(0).content, "abc");
    EXPECT_EQ(result.row(0).origin, RowOrigin::typed);
    EXPECT_TRUE(result.choice(0).typed);
    EXPECT_EQ(result.row(2).origin, RowOrigin::contributor);
}

TEST(MergeResult, TypingIntoAConflictResolvesIt)
{
    MergeResult result = one_conflict();

    EXPECT_EQ(result.replace({1, 0}, {1, 0}, "typed"), (ResultPosition{1, 5}));

    EXPECT_TRUE(result.is_resolved());
    EXPECT_EQ(result.bytes(), "a\ntyped\nc\nd\nE\n");
    EXPECT_TRUE(result.choice(conflict).typed);
}

TEST(MergeResult, AWholeRegionCanBeDeleted)
{
    MergeResult result = one_conflict();
    result.choose(conflict, {1});

    result.replace({0, 1}, {2, 2}, "");

    EXPECT_EQ(result.bytes(), "a\nc\nd\nE\n");
    EXPECT_TRUE(result.is_resolved());
    result.put_back(conflict);
    EXPECT_EQ(result.row(1).origin, RowOrigin::unresolved);
}

TEST(MergeResult, TypingBehindTheLastEndOfLineAddsALineWithoutOne)
{
    MergeResult result = result_of(texts_of({"a\n", "a\n", "a\n"}));

    EXPECT_EQ(result.replace({1, 0}, {1, 0}, "b"), (ResultPosition{1, 1}));

    EXPECT_EQ(result.bytes(), "a\nb");
    EXPECT_EQ(result.row_count(), 2U);
}

TEST(MergeResult, AnEmptyResultCanBeTypedInto)
{
    MergeResult result = result_of(texts_of({"", "", ""}));
    EXPECT_EQ(result.row_count(), 1U);

    result.replace({0, 0}, {0, 0}, "a\nb\n");

    EXPECT_EQ(result.bytes(), "a\nb\n");
}

TEST(MergeResult, EverythingCanBeDeleted)
{
    MergeResult result = one_conflict();

    result.replace({0, 0}, {5, 0}, "");

    EXPECT_EQ(result.bytes(), "");
    EXPECT_EQ(result.row_count(), 1U);
    result.replace({0, 0}, {0, 0}, "new");
    EXPECT_EQ(result.bytes(), "new");
}

TEST(MergeResult, TypedLinesGetTheEndOfTheirNeighbours)
{
    MergeResult result = result_of(texts_of({"a\r\nb\r\nc\n", "a\r\nb\r\nc\n", "a\r\nb\r\nc\n"}));

    result.replace({0, 1}, {0, 1}, "\nx\ry\r\nz");

    EXPECT_EQ(result.bytes(), "a\r\nx\r\ny\r\nz\r\nb\r\nc\n");
}

TEST(MergeResult, ALastLineWithoutAnEndGetsOneOnlyInTheMiddle)
{
    MergeResult result = result_of(texts_of({"a\r\nb", "a\r\nx", "a\r\ny"}));

    result.choose(conflict, {1});
    EXPECT_EQ(result.bytes(), "a\r\nx");
    result.choose(conflict, {1, 2});
    EXPECT_EQ(result.bytes(), "a\r\nx\r\ny");
    EXPECT_EQ(result.row(1).end, LineEnd::crlf);
}

TEST(MergeResult, AStepCanJoinTheLastOne)
{
    MergeResult result = one_conflict();
    result.replace({0, 1}, {0, 1}, "b");
    result.replace({0, 2}, {0, 2}, "c", true);
    EXPECT_EQ(result.row(0).content, "abc");

    result.undo();
    EXPECT_EQ(result.row(0).content, "a");
    EXPECT_FALSE(result.can_undo());

    result.redo();
    EXPECT_EQ(result.row(0).content, "abc");
}

TEST(MergeResult, TextIsGivenWithItsEnds)
{
    const MergeResult result = result_of(texts_of({"ab\r\ncd\nef", "ab\r\ncd\nef"}));

    EXPECT_EQ(result.text_between({0, 1}, {2, 1}), "b\r\ncd\ne");
    EXPECT_EQ(result.text_between({1, 0}, {1, 1}), "c");
}

TEST(MergeResult, TheBytesHaveEncodingAndMark)
{
    using namespace std::string_literals;
    const auto text = std::make_shared<const Text>("a\n", 2, true);

    EXPECT_EQ(result_of({text, text, text}).bytes(), "\xfe\xff\0a\0\n"s);
}

std::string whole_text(const MergeResult& result)
{
    const std::size_t last = result.row_count() - 1;
    return result.text_between({0, 0}, {last, result.row(last).content.size()});
}

/** Edits at random, with each step made on a plain text as well. */
class Editing : public testing::TestWithParam<unsigned>
{
  protected:
    std::size_t below(std::size_t limit) { return engine() % limit; }

    ResultPosition somewhere(const MergeResult& result)
    {
        const std::size_t row = below(result.row_count());
        return {row, below(result.row(row).content.size() + 1)};
    }

    static std::size_t offset(const MergeResult& result, ResultPosition position)
    {
        return result.text_between({0, 0}, position).size();
    }

    void edit(MergeResult& result)
    {
        static constexpr std::array<const char*, 6> texts = {"",         "x",   "\n",
                                                             "one\ntwo", "y\n", "\n\n"};
        ResultPosition begin = somewhere(result);
        ResultPosition end = below(2) == 0 ? begin : somewhere(result);
        if (end < begin)
            std::swap(begin, end);
        const std::string text = texts.at(below(texts.size()));
        std::string expected = whole_text(result);
        const std::size_t from = offset(result, begin);
        expected.replace(from, offset(result, end) - from, text);

        const ResultPosition behind = result.replace(begin, end, text);

        ASSERT_EQ(whole_text(result), expected);
        ASSERT_EQ(offset(result, behind), from + text.size());
        ASSERT_EQ(result.bytes(), expected);
    }

    void choose_or_type(MergeResult& result)
    {
        const ResultPosition begin = somewhere(result);
        if (below(2) == 0)
            result.choose(below(result.plan().regions.size()), {below(3), below(3)});
        else
            result.replace(begin, std::max(begin, {result.row_count() - 1, 0}), "x\n");
    }

    std::mt19937 engine{GetParam()};
};

TEST_P(Editing, ChangesTheTextAsAPlainOne)
{
    TripleMaker maker(GetParam());
    const Triple triple = maker.make();
    MergeResult result = result_of(triple.texts());
    result.choose_for_unresolved(1 + below(2));
    for (int count = 0; count < 40; ++count)
        ASSERT_NO_FATAL_FAILURE(edit(result));
}

TEST_P(Editing, IsUndoneAndRedoneStepByStep)
{
    TripleMaker maker(GetParam());
    MergeResult result = result_of(maker.make().texts());
    std::vector<std::string> states = {result.bytes()};
    for (int count = 0; count < 20; ++count) {
        choose_or_type(result);
        states.push_back(result.bytes());
    }
    std::vector<std::string> undone = {result.bytes()};
    while (result.can_undo())
        undone.push_back((result.undo(), result.bytes()));
    EXPECT_FALSE(result.has_unsaved_work());
    std::vector<std::string> redone = {result.bytes()};
    while (result.can_redo())
        redone.push_back((result.redo(), result.bytes()));

    EXPECT_EQ(undone, std::vector<std::string>(states.rbegin(), states.rend()));
    EXPECT_EQ(redone, states);
}

INSTANTIATE_TEST_SUITE_P(At, Editing, testing::Range(0U, 50U));

} // namespace
