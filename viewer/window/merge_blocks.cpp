#include "viewer/window/merge_blocks.h"

#include <algorithm>

namespace
{

/** Of lines that are not those beside them. */
Change change_of(LineRange lines, bool has_lines_beside)
{
    if (lines.empty())
        return Change::missing;
    return has_lines_beside ? Change::changed : Change::added;
}

std::vector<Change> changes_of(const MergeRegion& region, const Texts& contributors)
{
    std::vector<Change> changes(region.lines.size(), Change::none);
    const LineRange first = region.lines.front();
    bool has_lines_beside_first = false;
    for (std::size_t index = 1; index < changes.size(); ++index) {
        const LineRange lines = region.lines[index];
        if (contributors[index]->lines(lines) == contributors[0]->lines(first))
            continue;
        changes[index] = change_of(lines, !first.empty());
        changes[0] = Change::changed;
        has_lines_beside_first = has_lines_beside_first || !lines.empty();
    }
    if (changes[0] != Change::none)
        changes[0] = change_of(first, has_lines_beside_first);
    return changes;
}

} // namespace

Comparison blocks_of(const MergePlan& plan, const Texts& contributors)
{
    LinePairing pairing(contributors);
    std::vector<Block> blocks;
    blocks.reserve(plan.regions.size());
    for (const MergeRegion& region : plan.regions) {
        const bool same = region.kind == RegionKind::unchanged;
        Block block{.kind = same ? BlockKind::equal : BlockKind::different,
                    .lines = region.lines,
                    .changes = {}};
        block.changes = same ? std::vector<Change>(region.lines.size(), Change::none)
                             : changes_of(region, contributors);
        if (!same)
            block.rows = pairing.rows_of(region.lines);
        blocks.push_back(std::move(block));
    }
    return Comparison(std::move(blocks));
}

std::size_t region_of(const Comparison& blocks, const Block& block)
{
    return static_cast<std::size_t>(&block - blocks.blocks().data());
}

BlockLook merge_look(const MergeResult& result, std::size_t region, const Block& block,
                     std::size_t contributor)
{
    BlockLook look = compare_look(block, contributor);
    if (look.tint == Tint::none)
        return look;
    const RegionChoice choice = result.choice(region);
    if (result.plan().regions[region].kind == RegionKind::conflict)
        look.tint = choice.resolved ? Tint::resolved : Tint::conflict;
    constexpr char16_t tick = 0x2713;
    if (choice.resolved &&
        std::ranges::find(choice.contributors, contributor) != choice.contributors.end())
        look.sign = QChar(tick);
    return look;
}
