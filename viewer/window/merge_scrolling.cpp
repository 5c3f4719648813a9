#include "viewer/window/merge_scrolling.h"

#include "viewer/window/merge_blocks.h"

#include <algorithm>

void MergeScrolling::follow_contributors()
{
    const Comparison& blocks = side.rows().comparison();
    if (is_following || result == nullptr || blocks.row_count() == 0 ||
        side.top_row() >= blocks.row_count())
        return;
    is_following = true;
    const Block& block = blocks.block_at(side.top_row());
    const LineRange range = result->rows_of(region_of(blocks, block));
    pane.go_to_row(range.begin + std::min(side.top_row() - block.first_row, range.size()));
    is_following = false;
}

void MergeScrolling::follow_result()
{
    const Comparison& blocks = side.rows().comparison();
    if (is_following || result == nullptr || blocks.row_count() == 0 || result->row_count() == 0)
        return;
    is_following = true;
    const std::size_t region = result->region_at(pane.top_row());
    const Block& block = blocks.blocks()[region];
    const std::size_t down = pane.top_row() - result->rows_of(region).begin;
    side.scroll_to_row(block.first_row + std::min(down, block.row_count - 1));
    is_following = false;
}

void MergeScrolling::go_to_region(std::size_t region)
{
    is_following = true;
    const Comparison& blocks = side.rows().comparison();
    if (const auto difference = blocks.difference_at(blocks.blocks()[region].first_row))
        side.go_to_difference(*difference);
    pane.go_to_region(region);
    is_following = false;
}
