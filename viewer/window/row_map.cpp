#include "viewer/window/row_map.h"

#include <algorithm>

namespace
{

constexpr std::size_t context = 3;      // equal rows shown beside a difference
constexpr std::size_t least_folded = 3; // fewer are not worth a fold

} // namespace

RowMap::RowMap(const Comparison& comparison, std::vector<std::uint32_t> part_ends, bool collapse,
               const std::set<std::size_t>& opened)
    : ends(std::move(part_ends))
{
    if (!collapse) {
        add(0, comparison.row_count(), false);
        return;
    }
    for (const Block& block : comparison.blocks()) {
        const std::size_t behind = block.first_row + block.row_count;
        const std::size_t above = block.first_row == 0 ? 0 : context;
        const std::size_t below = behind == comparison.row_count() ? 0 : context;
        const bool folds = block.kind == BlockKind::equal &&
                           block.row_count >= above + below + least_folded &&
                           !opened.contains(block.first_row);
        if (!folds) {
            add(block.first_row, block.row_count, false);
            continue;
        }
        add(block.first_row, above, false);
        add(block.first_row + above, block.row_count - above - below, true);
        add(behind - below, below, false);
    }
}

RowMap::RowMap(std::size_t row_count, std::vector<std::uint32_t> part_ends)
    : ends(std::move(part_ends))
{
    add(0, row_count, false);
}

void RowMap::add(std::size_t first_row, std::size_t row_count, bool folded)
{
    if (row_count == 0)
        return;
    const bool goes_on = !folded && !stretches.empty() && !stretches.back().folded;
    if (goes_on)
        stretches.back().row_count += row_count;
    else
        stretches.push_back({total, first_row, row_count, folded});
    total += folded ? 1 : parts_before(first_row + row_count) - parts_before(first_row);
}

std::size_t RowMap::parts_before(std::size_t row) const
{
    if (ends.empty())
        return row;
    return row == 0 ? 0 : ends[row - 1];
}

SeenRow RowMap::at(std::size_t seen) const
{
    const auto behind = std::ranges::upper_bound(stretches, seen, {}, &Stretch::first_seen);
    const Stretch& stretch = *(behind - 1);
    if (stretch.folded)
        return {.row = stretch.first_row, .hidden = stretch.row_count};
    const std::size_t part = parts_before(stretch.first_row) + seen - stretch.first_seen;
    if (ends.empty())
        return {.row = part};
    const auto row = static_cast<std::size_t>(std::ranges::upper_bound(ends, part) - ends.begin());
    return {.row = row, .part = part - parts_before(row)};
}

std::size_t RowMap::seen_at(std::size_t row) const
{
    const auto behind = std::ranges::upper_bound(stretches, row, {}, &Stretch::first_row);
    if (behind == stretches.begin())
        return 0;
    const Stretch& stretch = *(behind - 1);
    if (stretch.folded)
        return stretch.first_seen;
    return stretch.first_seen + parts_before(row) - parts_before(stretch.first_row);
}
