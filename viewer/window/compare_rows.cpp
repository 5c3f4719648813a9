#include "viewer/window/compare_rows.h"

#include <algorithm>

namespace
{

constexpr std::size_t most_cached_rows = 1000;

BlockLook look_of_change(Change change, bool is_first)
{
    constexpr char16_t differs = 0x2260; // not equal to
    constexpr char16_t minus = 0x2212;
    const BlockLook added{Tint::added, QChar('+')};
    const BlockLook removed{Tint::removed, QChar(minus)};
    switch (change) {
    case Change::changed:
        return {Tint::changed, QChar(differs)};
    case Change::added:
        return is_first ? removed : added;
    case Change::missing:
        return is_first ? added : removed;
    case Change::none:
        break;
    }
    return {};
}

} // namespace

BlockLook compare_look(const Block& block, std::size_t contributor)
{
    return look_of_change(block.changes[contributor], contributor == 0);
}

void CompareRows::show(Texts contributors, Comparison compared)
{
    texts = std::move(contributors);
    blocks = std::move(compared);
    opened.clear();
    current.reset();
    word_cache.clear();
    lay_out();
}

void CompareRows::set_style(SharedStyle shared)
{
    style = std::move(shared);
    word_cache.clear();
    lay_out();
}

void CompareRows::set_wrap_widths(std::vector<qreal> widths)
{
    if (widths == wrap_widths)
        return;
    wrap_widths = std::move(widths);
    if (style && style->options.wrap)
        lay_out();
}

std::optional<std::size_t> CompareRows::next_difference(std::size_t top_row) const
{
    if (current)
        return blocks.next_difference(blocks.difference(*current).first_row);
    if (blocks.row_count() == 0)
        return std::nullopt;
    const auto here = blocks.difference_at(top_row);
    return here ? here : blocks.next_difference(top_row);
}

std::optional<std::size_t> CompareRows::previous_difference(std::size_t top_row) const
{
    return blocks.previous_difference(current ? blocks.difference(*current).first_row : top_row);
}

void CompareRows::open_fold(std::size_t seen)
{
    opened.insert(blocks.block_at(rows.at(seen).row).first_row);
    lay_out();
}

void CompareRows::lay_out()
{
    parts_cache.clear();
    if (style)
        rows = RowMap(blocks, part_ends(), style->options.collapse, opened);
}

LineParts CompareRows::parts(std::size_t contributor, std::size_t line) const
{
    static const LineParts whole = std::make_shared<const std::vector<std::size_t>>(1, 0);
    if (!style->options.wrap || wrap_widths.size() != texts.size())
        return whole;
    return parts_cache.parts(texts[contributor]->line(line), wrap_widths[contributor],
                             style->metrics);
}

std::vector<std::uint32_t> CompareRows::part_ends() const
{
    if (!style->options.wrap || wrap_widths.size() != texts.size())
        return {};
    std::vector<std::uint32_t> ends;
    ends.reserve(blocks.row_count());
    std::uint32_t behind = 0;
    for (const Block& block : blocks.blocks())
        for (std::size_t row = block.first_row; row < block.first_row + block.row_count; ++row) {
            std::size_t most = 1;
            for (std::size_t index = 0; index < texts.size(); ++index)
                if (const auto line = block.line_at(row, index))
                    most = std::max(most, parts(index, *line)->size());
            behind += static_cast<std::uint32_t>(most);
            ends.push_back(behind);
        }
    return ends;
}

const std::vector<std::vector<Span>>& CompareRows::words(std::size_t row) const
{
    if (const auto found = word_cache.find(row); found != word_cache.end())
        return found->second;
    if (word_cache.size() > most_cached_rows)
        word_cache.clear();
    return word_cache.emplace(row, changed_words_of_row(texts, blocks, row, style->options.compare))
        .first->second;
}

/** Whether a line ends otherwise than the first's in its row, or that one than any other. */
bool CompareRows::ends_differ(const SeenRow& seen, std::size_t contributor, LineEnd end) const
{
    const auto differs = [&](std::size_t other) {
        const auto line = blocks.line_at(seen.row, other);
        return line && texts[other]->line_end(*line) != end;
    };
    if (contributor > 0)
        return differs(0);
    for (std::size_t other = 1; other < texts.size(); ++other)
        if (differs(other))
            return true;
    return false;
}

void CompareRows::fill_line(PaintedRow& painted, const SeenRow& seen, std::size_t contributor,
                            std::size_t line) const
{
    const LineParts kept = parts(contributor, line);
    const auto& begins = *kept;
    const Text& text = *texts[contributor];
    if (seen.part >= begins.size())
        return; // a gap: the line beside it takes more rows
    painted.text = text.line(line);
    painted.kind = RowKind::text;
    painted.line = line;
    const bool is_last = seen.part + 1 == begins.size();
    painted.part = {begins[seen.part], is_last ? painted.text.size() : begins[seen.part + 1]};
    if (is_last) {
        painted.end = text.line_end(line);
        painted.end_differs =
            painted.tint != Tint::none && ends_differ(seen, contributor, *painted.end);
    }
    if (seen.part == 0)
        painted.number = line + 1;
    if (painted.tint != Tint::none)
        painted.strong = words(seen.row).at(contributor);
}

/** As the block's look says, and where that is a compare's, for this row alone. */
BlockLook CompareRows::look_in_row(const Block& block, std::size_t row,
                                   std::size_t contributor) const
{
    BlockLook look = look_of(block, contributor);
    const BlockLook of_block = compare_look(block, contributor);
    const BlockLook of_row =
        look_of_change(change_in_row(texts, block, row, contributor), contributor == 0);
    if (look.tint == of_block.tint)
        look.tint = of_row.tint;
    if (look.sign == of_block.sign)
        look.sign = of_row.sign;
    return look;
}

PaintedRow CompareRows::row(std::size_t seen, std::size_t contributor) const
{
    const SeenRow place = rows.at(seen);
    if (place.hidden > 0)
        return {.kind = RowKind::fold, .hidden = place.hidden};
    const Block& block = blocks.block_at(place.row);
    const auto line = block.line_at(place.row, contributor);
    PaintedRow painted;
    if (block.kind == BlockKind::different) {
        const BlockLook look = look_in_row(block, place.row, contributor);
        const bool continues_gap =
            !line && place.row > block.first_row && !block.line_at(place.row - 1, contributor);
        painted.tint = look.tint;
        if (place.part == 0 && !continues_gap)
            painted.sign = look.sign;
        painted.is_current = current && blocks.difference(*current).first_row == block.first_row;
    }
    if (line)
        fill_line(painted, place, contributor, *line);
    return painted;
}

std::size_t CompareRows::row_of(std::size_t contributor, TextPosition place) const
{
    if (texts[contributor]->line_count() == 0)
        return 0;
    const std::size_t line = std::min(place.line, texts[contributor]->line_count() - 1);
    const std::size_t row = blocks.row_of(contributor, line);
    const std::size_t seen = rows.seen_at(row);
    if (rows.at(seen).hidden > 0)
        return seen;
    const LineParts kept = parts(contributor, line);
    const auto& begins = *kept;
    const auto behind = std::ranges::upper_bound(begins, place.byte);
    return seen + static_cast<std::size_t>(behind - begins.begin()) - 1;
}

std::string CompareColumn::text_between(TextPosition begin, TextPosition end) const
{
    if (text().line_count() == 0 || begin >= end)
        return {};
    const std::size_t from = text().line_start(begin.line) + begin.byte;
    const std::size_t behind = text().line_start(end.line) + end.byte;
    return text().content().substr(from, behind - from);
}
