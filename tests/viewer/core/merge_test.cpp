#include "tests/viewer/core/texts.h"
#include "viewer/core/merge.h"

#include <gtest/gtest.h>

namespace
{

std::optional<std::string> merged(const Texts& texts)
{
    return automatic_merge(texts, *plan_merge(texts, true));
}

std::size_t conflicts(const Texts& texts, bool first_is_ancestor = true)
{
    return plan_merge(texts, first_is_ancestor)->conflict_count();
}

TEST(Merge, WhatOneSideChangedIsTaken)
{
    EXPECT_EQ(merged(texts_of({"a\nb\nc\n", "a\nB\nc\n", "a\nb\nc\n"})), "a\nB\nc\n");
    EXPECT_EQ(merged(texts_of({"a\nb\nc\n", "a\nb\nc\n", "a\nc\n"})), "a\nc\n");
}

TEST(Merge, ChangesOfBothSidesAreTaken)
{
    EXPECT_EQ(merged(texts_of({"a\nb\nc\nd\n", "A\nb\nc\nd\n", "a\nb\nc\nD\n"})), "A\nb\nc\nD\n");
}

TEST(Merge, AChangeAlikeIsTakenOnce)
{
    EXPECT_EQ(merged(texts_of({"a\nb\n", "a\nx\nb\n", "a\nx\nb\n"})), "a\nx\nb\n");
}

TEST(Merge, DifferentChangesOfALineAreAConflict)
{
    const Texts texts = texts_of({"a\nb\nc\n", "a\nB\nc\n", "a\nX\nc\n"});

    EXPECT_EQ(conflicts(texts), 1U);
    EXPECT_EQ(merged(texts), std::nullopt);
}

TEST(Merge, ChangesOfNeighbouringLinesAreAConflict)
{
    EXPECT_EQ(conflicts(texts_of({"a\nb\n", "A\nb\n", "a\nB\n"})), 1U);
}

TEST(Merge, RegionsOfAConflictNameTheLinesOfAll)
{
    const auto plan = plan_merge(texts_of({"a\nb\nc\n", "a\nB\nBB\nc\n", "a\nc\n"}), true);

    ASSERT_EQ(plan->regions.size(), 3U);
    EXPECT_EQ(plan->regions[1].kind, RegionKind::conflict);
    EXPECT_EQ(plan->regions[1].lines, (std::vector<LineRange>{{1, 2}, {1, 3}, {1, 1}}));
}

TEST(Merge, WhatBothSidesHaveInCommonIsNoConflict)
{
    const auto plan =
        plan_merge(texts_of({"p\nq\n", "P\n1\n2\n3\n4\nQ\n", "R\n1\n2\n3\n4\nS\n"}), true);

    ASSERT_EQ(plan->regions.size(), 3U);
    EXPECT_EQ(plan->regions[0].lines, (std::vector<LineRange>{{0, 2}, {0, 1}, {0, 1}}));
    EXPECT_EQ(plan->regions[1].kind, RegionKind::changed);
    EXPECT_EQ(plan->regions[1].lines, (std::vector<LineRange>{{2, 2}, {1, 5}, {1, 5}}));
    EXPECT_EQ(plan->regions[2].lines, (std::vector<LineRange>{{2, 2}, {5, 6}, {5, 6}}));
}

TEST(Merge, WithoutAnAncestorEveryDifferenceIsAConflict)
{
    EXPECT_EQ(conflicts(texts_of({"a\nb\nc\n", "A\nb\nc\nd\n"})), 2U);
    EXPECT_EQ(conflicts(texts_of({"a\nb\nc\n", "a\nb\nc\n", "a\nb\nC\n"}), false), 1U);
}

TEST(Merge, WithoutAnAncestorEqualTextsMerge)
{
    EXPECT_EQ(merged(texts_of({"a\nb", "a\nb"})), "a\nb");
}

TEST(Merge, ThreeSidesThatChangeDifferentPlacesMerge)
{
    EXPECT_EQ(merged(texts_of(
                  {"a\nb\nc\nd\ne\n", "A\nb\nc\nd\ne\n", "a\nb\nC\nd\ne\n", "a\nb\nc\nd\nE\n"})),
              "A\nb\nC\nd\nE\n");
}

TEST(Merge, OneOfThreeSidesThatDiffersMakesAConflict)
{
    EXPECT_EQ(conflicts(texts_of({"a\n", "x\n", "x\n", "x\n"})), 0U);
    EXPECT_EQ(conflicts(texts_of({"a\n", "x\n", "x\n", "y\n"})), 1U);
}

TEST(Merge, ALinesEndIsPartOfTheLine)
{
    EXPECT_EQ(merged(texts_of({"a\nb\nc\n", "a\r\nb\nc\n", "a\nb\nc\r"})), "a\r\nb\nc\r");
}

TEST(Merge, AFinalEndOfLineThatWasNotThereDoesNotAppear)
{
    EXPECT_EQ(merged(texts_of({"a\nb\nc", "A\nb\nc", "a\nb\nc"})), "A\nb\nc");
    EXPECT_EQ(merged(texts_of({"a\nb\nc\n", "a\nb\nc", "A\nb\nc\n"})), "A\nb\nc");
}

Texts with_marks(bool ancestor, bool first, bool second)
{
    return {std::make_shared<const Text>("a\n", 1, ancestor),
            std::make_shared<const Text>("a\n", 1, first),
            std::make_shared<const Text>("a\n", 1, second)};
}

TEST(Merge, TheMarkMergesLikeALine)
{
    using namespace std::string_literals;
    const std::string without = "a\0\n\0"s;
    const std::string with = "\xff\xfe"s + without;

    EXPECT_EQ(merged(with_marks(true, true, true)), with);
    EXPECT_EQ(merged(with_marks(true, false, true)), without);
    EXPECT_EQ(merged(with_marks(false, false, true)), with);
    EXPECT_EQ(merged(with_marks(false, false, false)), without);
}

TEST(Merge, AStopGivesNothing)
{
    std::stop_source stop;
    stop.request_stop();

    EXPECT_FALSE(plan_merge(texts_of({"a", "b", "c"}), true, stop.get_token()).has_value());
}

class GeneratedTriples : public testing::TestWithParam<unsigned>
{
  protected:
    TripleMaker maker{GetParam() + 100};
};

constexpr int triples = 500;

TEST_P(GeneratedTriples, OneSideThatIsTheAncestorGivesTheOther)
{
    for (int count = 0; count < triples; ++count) {
        const auto [a, b, unused] = maker.make();
        ASSERT_EQ(merged(texts_of({a, a, b})), b) << a;
        ASSERT_EQ(merged(texts_of({a, b, a})), b) << a;
    }
}

TEST_P(GeneratedTriples, TwoSidesAlikeGiveThem)
{
    for (int count = 0; count < triples; ++count) {
        const auto [a, b, unused] = maker.make();
        ASSERT_EQ(merged(texts_of({a, b, b})), b) << a;
    }
}

TEST_P(GeneratedTriples, TheSidesMayChangePlaces)
{
    for (int count = 0; count < triples; ++count) {
        const auto [a, b, c] = maker.make();
        ASSERT_EQ(merged(texts_of({a, b, c})), merged(texts_of({a, c, b}))) << a << "---\n"
                                                                            << b << "---\n"
                                                                            << c;
    }
}

/** Whether the regions hold every line of every contributor, in order. */
void expect_cover(const Texts& texts, const MergePlan& plan)
{
    for (std::size_t index = 0; index < texts.size(); ++index) {
        std::size_t next = 0;
        for (const MergeRegion& region : plan.regions) {
            ASSERT_EQ(region.lines[index].begin, next);
            ASSERT_LE(region.lines[index].begin, region.lines[index].end);
            next = region.lines[index].end;
        }
        ASSERT_EQ(next, texts[index]->line_count());
    }
}

TEST_P(GeneratedTriples, RegionsCoverAllLines)
{
    for (int count = 0; count < triples; ++count) {
        const Texts texts = maker.make().texts();
        expect_cover(texts, *plan_merge(texts, true));
        expect_cover(texts, *plan_merge(texts, false));
    }
}

INSTANTIATE_TEST_SUITE_P(Part, GeneratedTriples, testing::Range(0U, 3U));

} // namespace
