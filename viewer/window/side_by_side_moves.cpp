// Where the columns are scrolled to, and what is shown of them.
#include "viewer/window/side_by_side.h"

#include <algorithm>

namespace
{

constexpr std::size_t rows_above = 4; // shown above a difference that was gone to

} // namespace

std::size_t SideBySide::top_row() const
{
    const std::size_t count = all.map().count();
    if (count == 0)
        return 0;
    return all.map().at(std::min(bars.top(), count - 1)).row;
}

void SideBySide::scroll_to_row(std::size_t row)
{
    if (row < all.comparison().row_count())
        bars.set_top(all.map().seen_at(row));
}

void SideBySide::go_to_row(std::size_t row)
{
    if (all.map().count() == 0)
        return;
    const std::size_t seen = all.map().seen_at(row);
    bars.set_top(seen - std::min(seen, rows_above));
}

void SideBySide::go_to_difference(std::size_t index)
{
    all.set_current(index);
    const Block& block = all.comparison().difference(index);
    for (std::size_t contributor = 0; contributor < sources.size(); ++contributor) {
        const TextPosition begin{block.lines[contributor].begin, 0};
        column(contributor).select(begin, begin);
    }
    const std::size_t seen = all.map().seen_at(block.first_row);
    const std::size_t top = bars.top();
    const bool is_seen = seen >= top + 1 && seen + block.row_count < top + page_rows();
    if (!is_seen)
        go_to_row(block.first_row);
    update_columns();
}

std::optional<std::size_t> SideBySide::next_difference() const
{
    return all.next_difference(top_row());
}

std::optional<std::size_t> SideBySide::previous_difference() const
{
    return all.previous_difference(top_row());
}

void SideBySide::select_in(std::size_t index, TextPosition begin, TextPosition end)
{
    active = index;
    const std::size_t seen = sources[index]->row_of(end);
    if (all.map().at(seen).hidden > 0) {
        all.open_fold(seen);
        lay_out_again();
    }
    column(index).select(begin, end);
    reveal(index, begin);
    reveal(index, end);
}

void SideBySide::reveal(std::size_t index, TextPosition place)
{
    TextColumn& text = column(index);
    if (all.map().count() == 0 || sources[index]->line_count() == 0)
        return;
    const std::size_t seen = sources[index]->row_of(place);
    const std::size_t top = bars.top();
    const std::size_t page = page_rows();
    if (seen < top)
        bars.set_top(top - seen > page ? seen - std::min(seen, page / 3) : seen);
    else if (seen >= top + page)
        bars.set_top(seen - top > 2 * page ? seen - page / 3 : seen - page + 1);
    bars.reveal_across(text, place, style->metrics);
}

std::size_t SideBySide::top_line() const
{
    const Comparison& comparison = all.comparison();
    for (std::size_t row = top_row(); row < comparison.row_count(); ++row)
        if (const auto line = comparison.line_at(row, 0))
            return *line;
    return 0;
}

void SideBySide::scroll_to_line(std::size_t line)
{
    if (all.contributors().empty() || all.contributors()[0]->line_count() == 0)
        return;
    const std::size_t last = all.contributors()[0]->line_count() - 1;
    scroll_to_row(all.comparison().row_of(0, std::min(line, last)));
}

void SideBySide::open_nearest_fold()
{
    const std::size_t count = all.map().count();
    if (sources.empty() || count == 0)
        return;
    const auto is_fold = [this](std::size_t seen) { return all.map().at(seen).hidden > 0; };
    const std::size_t caret = sources[active]->row_of(column(active).caret());
    std::size_t seen = caret;
    while (seen < count && !is_fold(seen))
        ++seen;
    if (seen == count) {
        seen = caret;
        while (seen > 0 && !is_fold(seen))
            --seen;
    }
    if (!is_fold(seen))
        return;
    all.open_fold(seen);
    lay_out_again();
}
