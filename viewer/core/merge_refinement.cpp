#include "viewer/core/merge_refinement.h"

#include <algorithm>

namespace
{

/** The line of the ancestor that a line of a side stands beside; one within a hunk stands behind
    it, so that places in order stay in order. */
std::size_t beside(const AlignedGroup& group, std::size_t side, std::size_t line)
{
    std::size_t ancestor = group.lines[0].begin + (line - group.lines[side].begin);
    for (const Hunk& hunk : group.hunks[side]) {
        if (line <= hunk.second.begin)
            break;
        ancestor = hunk.first.end + std::max(line, hunk.second.end) - hunk.second.end;
    }
    return ancestor;
}

/** The regions of one conflict, one behind the other. */
class Splitter
{
  public:
    explicit Splitter(const AlignedGroup& whole) : group(whole)
    {
        for (const LineRange& lines : group.lines)
            from.push_back(lines.begin);
    }

    /** A region up to these lines of the two sides. */
    void split(RegionKind kind, std::size_t first_side, std::size_t second_side)
    {
        const bool last = first_side == group.lines[1].end && second_side == group.lines[2].end;
        add(kind,
            {last ? group.lines[0].end : beside(group, 1, first_side), first_side, second_side});
    }

    std::vector<DraftRegion> regions;

  private:
    void add(RegionKind kind, const std::vector<std::size_t>& to)
    {
        MergeRegion region{.kind = kind, .source = 1, .lines = {}};
        for (std::size_t index = 0; index < to.size(); ++index)
            region.lines.push_back({from[index], to[index]});
        from = to;
        regions.push_back({std::move(region), kind != RegionKind::conflict});
    }

    const AlignedGroup& group;
    std::vector<std::size_t> from;
};

bool has_letter_or_digit(std::string_view text)
{
    return std::ranges::any_of(text, [](char byte) {
        return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
               (byte >= 'a' && byte <= 'z');
    });
}

bool is_next_to_nothing(const Text& text, LineRange lines)
{
    constexpr std::size_t few = 3;
    return lines.size() <= few || !has_letter_or_digit(text.lines(lines));
}

bool is_conflict(const DraftRegion& draft)
{
    return draft.region.kind == RegionKind::conflict;
}

/** Joins the last draft, a conflict, to the one before it where that may be. */
void join_last(std::vector<DraftRegion>& drafts, const Text& first_side)
{
    auto before = drafts.end() - 1;
    while (before != drafts.begin() && (before - 1)->may_join)
        --before;
    if (before == drafts.begin() || !is_conflict(*(before - 1)))
        return;
    --before;
    const MergeRegion& last = drafts.back().region;
    if (!is_next_to_nothing(first_side, {before->region.lines[1].end, last.lines[1].begin}))
        return;
    for (std::size_t index = 0; index < last.lines.size(); ++index)
        before->region.lines[index].end = last.lines[index].end;
    drafts.erase(before + 1, drafts.end());
}

} // namespace

std::vector<DraftRegion> refined_conflict(const AlignedGroup& conflict,
                                          std::span<const LineNumbers> numbers)
{
    const LineRange& first = conflict.lines[1];
    const LineRange& second = conflict.lines[2];
    if (first.empty() || second.empty())
        return {{{RegionKind::conflict, 0, conflict.lines}, false}};
    const auto hunks = find_hunks(part_of(numbers[1], first), part_of(numbers[2], second));
    if (hunks.empty())
        return {{{RegionKind::changed, 1, conflict.lines}, false}};
    Splitter splitter(conflict);
    for (const Hunk& hunk : hunks) {
        if (hunk.first.begin > 0)
            splitter.split(RegionKind::changed, first.begin + hunk.first.begin,
                           second.begin + hunk.second.begin);
        splitter.split(RegionKind::conflict, first.begin + hunk.first.end,
                       second.begin + hunk.second.end);
    }
    if (hunks.back().first.end < first.size())
        splitter.split(RegionKind::changed, first.end, second.end);
    return std::move(splitter.regions);
}

std::vector<DraftRegion> joined_conflicts(std::vector<DraftRegion> drafts, const Text& first_side)
{
    std::vector<DraftRegion> joined;
    joined.reserve(drafts.size());
    for (DraftRegion& draft : drafts) {
        joined.push_back(std::move(draft));
        if (is_conflict(joined.back()))
            join_last(joined, first_side);
    }
    return joined;
}
