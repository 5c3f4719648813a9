#include "viewer/core/alignment.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace
{

/** Goes through the hunks of one contributor. */
class Side
{
  public:
    explicit Side(std::span<const Hunk> in_order) : hunks(in_order) {}

    const Hunk* next() const { return taken == hunks.size() ? nullptr : &hunks[taken]; }

    /** Lines of the first up to which there is no hunk left, in this contributor. */
    std::size_t here(std::size_t line_of_first) const
    {
        return line_of_first - first_end + second_end;
    }

    /** Takes the hunks that begin in or right behind the range, and widens it to hold them. False
        when there are none. */
    bool take(LineRange& range)
    {
        const std::size_t before = taken;
        for (; next() != nullptr && next()->first.begin <= range.end; ++taken) {
            first_end = next()->first.end;
            second_end = next()->second.end;
            range.end = std::max(range.end, first_end);
        }
        return taken != before;
    }

    /** Those taken since the last time. */
    std::span<const Hunk> collect()
    {
        const std::size_t from = std::exchange(collected, taken);
        return hunks.subspan(from, taken - from);
    }

  private:
    std::span<const Hunk> hunks;
    std::size_t taken = 0;
    std::size_t collected = 0;
    std::size_t first_end = 0; // of the last hunk taken
    std::size_t second_end = 0;
};

/** Where the next group begins in the first. */
std::optional<std::size_t> next_begin(std::span<const Side> sides)
{
    std::optional<std::size_t> begin;
    for (const Side& side : sides)
        if (const Hunk* hunk = side.next(); hunk != nullptr)
            begin = std::min(begin.value_or(hunk->first.begin), hunk->first.begin);
    return begin;
}

AlignedGroup take_group(std::span<Side> sides, std::size_t begin)
{
    AlignedGroup group;
    group.lines.resize(sides.size() + 1);
    group.hunks.resize(sides.size() + 1);
    for (std::size_t index = 0; index < sides.size(); ++index)
        group.lines[index + 1].begin = sides[index].here(begin);
    LineRange first = {begin, begin};
    for (bool widened = true; widened;) {
        widened = false;
        for (Side& side : sides)
            widened = side.take(first) || widened;
    }
    group.lines[0] = first;
    for (std::size_t index = 0; index < sides.size(); ++index) {
        group.lines[index + 1].end = sides[index].here(first.end);
        group.hunks[index + 1] = sides[index].collect();
    }
    return group;
}

} // namespace

std::vector<std::vector<Hunk>> hunks_against_first(std::span<const LineNumbers> numbers,
                                                   const std::stop_token& stop)
{
    std::vector<std::vector<Hunk>> hunks;
    hunks.reserve(numbers.size() - 1);
    for (const LineNumbers& other : numbers.subspan(1))
        if (!stop.stop_requested())
            hunks.push_back(find_hunks(numbers.front(), other));
    return hunks;
}

std::vector<AlignedGroup> align(std::span<const std::vector<Hunk>> hunks)
{
    std::vector<Side> sides;
    sides.reserve(hunks.size());
    for (const auto& of_one : hunks)
        sides.emplace_back(of_one);
    std::vector<AlignedGroup> groups;
    while (const auto begin = next_begin(sides))
        groups.push_back(take_group(sides, *begin));
    return groups;
}

std::vector<LineRange> lines_between(const AlignedGroup* before, const AlignedGroup* after,
                                     std::span<const std::size_t> line_counts)
{
    std::vector<LineRange> between(line_counts.size());
    for (std::size_t index = 0; index < between.size(); ++index)
        between[index] = {before != nullptr ? before->lines[index].end : 0,
                          after != nullptr ? after->lines[index].begin : line_counts[index]};
    return between;
}
