#include "viewer/core/comparison.h"

#include "viewer/core/alignment.h"
#include "viewer/core/hunks.h"

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

void set_changes(Block& block, std::span<const LineNumbers> numbers)
{
    bool has_lines_beside_first = false;
    for (std::size_t index = 1; index < block.lines.size(); ++index) {
        if (same_lines(numbers, block.lines, 0, index))
            continue;
        block.changes[index] = change_of(block.lines[index], !block.lines[0].empty());
        has_lines_beside_first = has_lines_beside_first || !block.lines[index].empty();
    }
    block.changes[0] = change_of(block.lines[0], has_lines_beside_first);
}

bool has_blank_lines_only(const Texts& contributors, std::span<const LineRange> lines)
{
    for (std::size_t index = 0; index < lines.size(); ++index)
        for (std::size_t line = lines[index].begin; line < lines[index].end; ++line)
            if (!is_blank(contributors[index]->line(line)))
                return false;
    return true;
}

Block block_of(BlockKind kind, std::vector<LineRange> lines)
{
    Block block{.kind = kind, .lines = std::move(lines), .changes = {}};
    block.changes.resize(block.lines.size());
    return block;
}

class Layout
{
  public:
    Layout(const Texts& compared, const CompareOptions& wanted)
        : contributors(compared), options(wanted), pairing(compared)
    {
        for (const auto& text : contributors)
            counts.push_back(text->line_count());
    }

    std::vector<Block> blocks(std::span<const LineNumbers> numbers,
                              std::span<const AlignedGroup> groups)
    {
        std::vector<Block> all;
        all.reserve(2 * groups.size() + 1);
        const AlignedGroup* before = nullptr;
        for (const AlignedGroup& group : groups) {
            add_equal(all, before, &group);
            all.push_back(difference(numbers, group));
            before = &group;
        }
        add_equal(all, before, nullptr);
        return all;
    }

  private:
    void add_equal(std::vector<Block>& all, const AlignedGroup* before,
                   const AlignedGroup* after) const
    {
        auto lines = lines_between(before, after, counts);
        if (!lines.front().empty())
            all.push_back(block_of(BlockKind::equal, std::move(lines)));
    }

    Block difference(std::span<const LineNumbers> numbers, const AlignedGroup& group)
    {
        if (options.ignore_blank_lines && has_blank_lines_only(contributors, group.lines))
            return block_of(BlockKind::ignored, group.lines);
        Block block = block_of(BlockKind::different, group.lines);
        set_changes(block, numbers);
        block.rows = pairing.rows_of(block.lines);
        return block;
    }

    const Texts& contributors;
    const CompareOptions& options;
    LinePairing pairing;
    std::vector<std::size_t> counts;
};

std::size_t row_count_of(const Block& block)
{
    std::size_t count = std::ranges::max(block.lines, {}, &LineRange::size).size();
    for (const auto& rows : block.rows)
        if (!rows.empty())
            count = std::max<std::size_t>(count, rows.back() + 1);
    return count;
}

} // namespace

std::optional<std::size_t> Block::line_at(std::size_t row, std::size_t contributor) const
{
    const LineRange& range = lines[contributor];
    std::size_t index = row - first_row;
    if (!rows.empty()) {
        const auto& of_lines = rows[contributor];
        const auto found = std::ranges::lower_bound(of_lines, index);
        if (found == of_lines.end() || *found != index)
            return std::nullopt;
        index = static_cast<std::size_t>(found - of_lines.begin());
    }
    return index < range.size() ? std::optional(range.begin + index) : std::nullopt;
}

Comparison::Comparison(std::vector<Block> in_order) : all(std::move(in_order))
{
    std::size_t row = 0;
    for (std::size_t index = 0; index < all.size(); ++index) {
        Block& block = all[index];
        block.first_row = row;
        block.row_count = row_count_of(block);
        row += block.row_count;
        if (block.kind == BlockKind::different)
            different.push_back(index);
    }
}

Comparison Comparison::before_comparing(const Texts& contributors)
{
    std::vector<LineRange> lines;
    lines.reserve(contributors.size());
    for (const auto& text : contributors)
        lines.push_back({0, text->line_count()});
    std::vector<Block> only;
    only.push_back(block_of(BlockKind::not_compared, std::move(lines)));
    return Comparison(std::move(only));
}

std::size_t Comparison::row_count() const
{
    return all.empty() ? 0 : all.back().first_row + all.back().row_count;
}

const Block& Comparison::block_at(std::size_t row) const
{
    return *(std::ranges::upper_bound(all, row, {}, &Block::first_row) - 1);
}

std::optional<std::size_t> Comparison::line_at(std::size_t row, std::size_t contributor) const
{
    return block_at(row).line_at(row, contributor);
}

std::size_t Comparison::row_of(std::size_t contributor, std::size_t line) const
{
    const auto begin = [&](const Block& block) { return block.lines[contributor].begin; };
    const Block& block = *(std::ranges::upper_bound(all, line, {}, begin) - 1);
    const std::size_t index = line - block.lines[contributor].begin;
    return block.first_row + (block.rows.empty() ? index : block.rows[contributor][index]);
}

std::optional<std::size_t> Comparison::difference_at(std::size_t row) const
{
    const auto before = previous_difference(row + 1);
    if (!before)
        return std::nullopt;
    const Block& block = difference(*before);
    return row < block.first_row + block.row_count ? before : std::nullopt;
}

std::optional<std::size_t> Comparison::next_difference(std::size_t row) const
{
    const auto first_row = [&](std::size_t block) { return all[block].first_row; };
    const auto next = std::ranges::upper_bound(different, row, {}, first_row);
    return next == different.end()
               ? std::nullopt
               : std::optional(static_cast<std::size_t>(next - different.begin()));
}

std::optional<std::size_t> Comparison::previous_difference(std::size_t row) const
{
    const auto first_row = [&](std::size_t block) { return all[block].first_row; };
    const auto next = std::ranges::lower_bound(different, row, {}, first_row);
    return next == different.begin()
               ? std::nullopt
               : std::optional(static_cast<std::size_t>(next - different.begin() - 1));
}

Change change_in_row(const Texts& contributors, const Block& block, std::size_t row,
                     std::size_t contributor)
{
    const auto of_first = block.line_at(row, 0);
    const auto against_first = [&](std::size_t other) {
        const auto line = block.line_at(row, other);
        if (block.changes[other] == Change::none || (!line && !of_first))
            return Change::none;
        if (!line || !of_first)
            return line ? Change::added : Change::missing;
        const bool same =
            contributors[0]->whole_line(*of_first) == contributors[other]->whole_line(*line);
        return same ? Change::none : Change::changed;
    };
    if (contributor > 0)
        return against_first(contributor);
    Change change = Change::none;
    for (std::size_t other = 1; other < contributors.size(); ++other) {
        const Change there = against_first(other);
        if (there == Change::changed)
            return there;
        if (there != Change::none)
            change = of_first ? Change::added : Change::missing;
    }
    return change;
}

std::optional<Comparison> compare(const Texts& contributors, const CompareOptions& options,
                                  const std::stop_token& stop)
{
    const std::vector<LineNumbers> numbers = number_lines(contributors, options, stop);
    const std::vector<std::vector<Hunk>> hunks = hunks_against_first(numbers, stop);
    if (stop.stop_requested())
        return std::nullopt;
    return Comparison(Layout(contributors, options).blocks(numbers, align(hunks)));
}
