#include "viewer/window/row_map.h"

#include <gtest/gtest.h>

namespace
{

/** 20 equal rows, 2 different, 5 equal, 1 different. */
Comparison sample()
{
    const auto block = [](BlockKind kind, std::size_t begin, std::size_t end) {
        return Block{.kind = kind,
                     .lines = {{begin, end}, {begin, end}},
                     .changes = {Change::none, Change::none}};
    };
    return Comparison({block(BlockKind::equal, 0, 20), block(BlockKind::different, 20, 22),
                       block(BlockKind::equal, 22, 27), block(BlockKind::different, 27, 28)});
}

TEST(RowMap, ShowsEveryRowOnceWithoutFolding)
{
    const RowMap map(sample(), {}, false, {});

    ASSERT_EQ(map.count(), 28U);
    for (std::size_t row = 0; row < map.count(); ++row) {
        EXPECT_EQ(map.at(row).row, row);
        EXPECT_EQ(map.seen_at(row), row);
    }
}

TEST(RowMap, FoldsLongEqualStretchesButForTheRowsBesideDifferences)
{
    const RowMap map(sample(), {}, true, {});

    ASSERT_EQ(map.count(), 12U); // a fold and 3, 2, 5, 1
    EXPECT_EQ(map.at(0).hidden, 17U);
    EXPECT_EQ(map.at(1).row, 17U);
    EXPECT_EQ(map.at(11).row, 27U);
    EXPECT_EQ(map.seen_at(5), 0U);
    EXPECT_EQ(map.seen_at(20), 4U);
}

TEST(RowMap, ShowsAgainWhatWasOpened)
{
    EXPECT_EQ(RowMap(sample(), {}, true, {0}).count(), 28U);
}

TEST(RowMap, GivesARowAsManyPlacesAsItHasParts)
{
    const RowMap map(3, {1, 4, 5}); // one part, three, one

    ASSERT_EQ(map.count(), 5U);
    EXPECT_EQ(map.at(2).row, 1U);
    EXPECT_EQ(map.at(2).part, 1U);
    EXPECT_EQ(map.at(4).row, 2U);
    EXPECT_EQ(map.seen_at(2), 4U);
}

TEST(RowMap, HasNoRowsForNothing)
{
    EXPECT_EQ(RowMap(Comparison(), {}, true, {}).count(), 0U);
}

} // namespace
