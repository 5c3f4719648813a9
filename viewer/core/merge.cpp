#include "viewer/core/merge.h"

#include "viewer/core/alignment.h"
#include "viewer/core/hunks.h"
#include "viewer/core/line_matching.h"
#include "viewer/core/merge_refinement.h"

#include <algorithm>

namespace
{

/** Whether both of two sides changed the same lines of the ancestor, in one piece. */
bool is_same_change(const AlignedGroup& group)
{
    return group.hunks[1].size() == 1 && group.hunks[2].size() == 1 &&
           group.hunks[1].front().first == group.hunks[2].front().first;
}

/** The first that changed the group's lines, where all others that did changed them alike. */
std::optional<std::size_t> only_change(std::span<const LineNumbers> numbers,
                                       const AlignedGroup& group)
{
    std::size_t source = 0;
    for (std::size_t index = 1; index < numbers.size(); ++index) {
        if (group.hunks[index].empty())
            continue;
        if (source != 0 && !same_lines(numbers, group.lines, source, index))
            return std::nullopt;
        source = source != 0 ? source : index;
    }
    return source;
}

class Planner
{
  public:
    Planner(std::span<const LineNumbers> of_all, bool has_ancestor)
        : numbers(of_all), with_ancestor(has_ancestor)
    {
        for (const LineNumbers& of_one : numbers)
            counts.push_back(of_one.size());
    }

    std::vector<DraftRegion> draft(std::span<const AlignedGroup> groups)
    {
        const AlignedGroup* before = nullptr;
        for (const AlignedGroup& group : groups) {
            add_unchanged(before, &group);
            add_group(group);
            before = &group;
        }
        add_unchanged(before, nullptr);
        return std::move(drafts);
    }

  private:
    void add_unchanged(const AlignedGroup* before, const AlignedGroup* after)
    {
        auto lines = lines_between(before, after, counts);
        if (!lines.front().empty())
            drafts.push_back({{RegionKind::unchanged, 0, std::move(lines)}, true});
    }

    void add_group(const AlignedGroup& group)
    {
        if (const auto source = with_ancestor ? only_change(numbers, group) : std::nullopt) {
            const bool alike = numbers.size() == 3 && is_same_change(group);
            drafts.push_back({{RegionKind::changed, *source, group.lines}, alike});
        } else if (with_ancestor && numbers.size() == 3) {
            std::ranges::move(refined_conflict(group, numbers), std::back_inserter(drafts));
        } else {
            drafts.push_back({{RegionKind::conflict, 0, group.lines}, false});
        }
    }

    std::span<const LineNumbers> numbers;
    std::vector<std::size_t> counts;
    bool with_ancestor;
    std::vector<DraftRegion> drafts;
};

std::vector<MergeRegion> regions_of(std::vector<DraftRegion> drafts)
{
    std::vector<MergeRegion> regions;
    regions.reserve(drafts.size());
    for (DraftRegion& draft : drafts)
        regions.push_back(std::move(draft.region));
    return regions;
}

/** Like a line of its own: what a side changed holds. */
bool merged_mark(const Texts& contributors, bool first_is_ancestor)
{
    const bool of_first = contributors.front()->has_mark();
    return first_is_ancestor
               ? of_first != std::ranges::any_of(
                                 contributors,
                                 [&](const auto& text) { return text->has_mark() != of_first; })
               : of_first;
}

} // namespace

std::size_t MergePlan::conflict_count() const
{
    return static_cast<std::size_t>(
        std::ranges::count(regions, RegionKind::conflict, &MergeRegion::kind));
}

std::optional<MergePlan> plan_merge(const Texts& contributors, bool first_is_ancestor,
                                    const std::stop_token& stop)
{
    const std::vector<LineNumbers> numbers = number_lines(contributors, {}, stop);
    const std::vector<std::vector<Hunk>> hunks = hunks_against_first(numbers, stop);
    if (stop.stop_requested())
        return std::nullopt;
    const bool with_ancestor = first_is_ancestor && contributors.size() > 2;
    auto drafts = Planner(numbers, with_ancestor).draft(align(hunks));
    if (with_ancestor && contributors.size() == 3)
        drafts = joined_conflicts(std::move(drafts), *contributors[1]);
    return MergePlan{.first_is_ancestor = with_ancestor,
                     .has_mark = merged_mark(contributors, with_ancestor),
                     .regions = regions_of(std::move(drafts))};
}

std::optional<std::string> automatic_merge(const Texts& contributors, const MergePlan& plan)
{
    std::string content;
    for (const MergeRegion& region : plan.regions) {
        if (region.kind == RegionKind::conflict)
            return std::nullopt;
        content += contributors[region.source]->lines(region.lines[region.source]);
    }
    return encode_text(content, contributors.front()->encoding(), plan.has_mark);
}
