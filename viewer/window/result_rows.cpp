#include "viewer/window/result_rows.h"

#include <algorithm>

namespace
{

/** Whose lines a row has, or that they were typed. */
QChar sign_of(const ResultRow& row, RegionKind kind)
{
    constexpr char16_t pencil = 0x270e;
    if (row.origin == RowOrigin::typed)
        return {pencil};
    if (row.origin == RowOrigin::unresolved)
        return {u'?'};
    if (row.origin == RowOrigin::contributor && kind != RegionKind::unchanged)
        return QString::number(row.contributor + 1).back();
    return {};
}

ResultPosition position(TextPosition place)
{
    return {place.line, place.byte};
}

} // namespace

Tint result_tint(const MergeResult& result, std::size_t region)
{
    switch (result.plan().regions[region].kind) {
    case RegionKind::changed:
        return Tint::changed;
    case RegionKind::conflict:
        return result.choice(region).resolved ? Tint::resolved : Tint::conflict;
    case RegionKind::unchanged:
        break;
    }
    return Tint::none;
}

void ResultRows::set_style(SharedStyle shared)
{
    style = std::move(shared);
    lay_out();
}

void ResultRows::set_wrap_width(qreal width)
{
    if (width == wrap_width)
        return;
    wrap_width = width;
    if (style->options.wrap)
        lay_out();
}

LineParts ResultRows::parts(std::string_view line) const
{
    static const LineParts whole = std::make_shared<const std::vector<std::size_t>>(1, 0);
    if (!style->options.wrap || wrap_width <= 0)
        return whole;
    return parts_cache.parts(line, wrap_width, style->metrics);
}

void ResultRows::lay_out()
{
    parts_cache.clear();
    std::vector<std::uint32_t> ends;
    if (style->options.wrap && wrap_width > 0) {
        ends.reserve(result.row_count());
        std::uint32_t behind = 0;
        for (std::size_t index = 0; index < result.row_count(); ++index) {
            behind += static_cast<std::uint32_t>(parts(result.row(index).content)->size());
            ends.push_back(behind);
        }
    }
    rows = RowMap(result.row_count(), std::move(ends));
    unresolved.clear();
    for (auto next = result.is_resolved() ? std::nullopt : std::optional<std::size_t>(0);
         next && *next < result.plan().regions.size(); ++*next)
        if (result.plan().regions[*next].kind == RegionKind::conflict &&
            !result.choice(*next).resolved)
            unresolved.push_back(*next);
}

/** The number that a line will have in the file, as far as conflicts are resolved. */
std::size_t ResultRows::number_of(std::size_t line, std::size_t region) const
{
    const auto above = std::ranges::lower_bound(unresolved, region) - unresolved.begin();
    return line + 1 - static_cast<std::size_t>(above);
}

PaintedRow ResultRows::row(std::size_t index) const
{
    const SeenRow seen = rows.at(index);
    const ResultRow from = result.row(seen.row);
    const LineParts kept = parts(from.content);
    const auto& begins = *kept;
    const auto begin_of = [&](std::size_t part) {
        return part < begins.size() ? begins[part] : from.content.size();
    };
    PaintedRow painted{.kind = from.origin == RowOrigin::unresolved ? RowKind::unresolved
                                                                    : RowKind::text,
                       .line = seen.row,
                       .text = from.content,
                       .part = {begin_of(seen.part), begin_of(seen.part + 1)},
                       .tint = result_tint(result, from.region),
                       .is_current = current == from.region};
    const bool has_line = from.origin == RowOrigin::contributor || from.origin == RowOrigin::typed;
    if (has_line && seen.part + 1 >= begins.size())
        painted.end = from.end;
    if (from.origin == RowOrigin::end) {
        painted.tint = Tint::none;
        painted.is_current = false;
    } else if (seen.part == 0) {
        painted.sign = sign_of(from, result.plan().regions[from.region].kind);
        if (from.origin != RowOrigin::unresolved)
            painted.number = number_of(seen.row, from.region);
    }
    if (painted.tint == Tint::none && from.origin == RowOrigin::typed)
        painted.tint = Tint::resolved;
    return painted;
}

std::size_t ResultRows::row_of(TextPosition place) const
{
    if (result.row_count() == 0)
        return 0;
    const std::size_t line = std::min(place.line, result.row_count() - 1);
    const LineParts kept = parts(result.row(line).content);
    const auto& begins = *kept;
    const auto behind = std::ranges::upper_bound(begins, place.byte);
    return rows.seen_at(line) + static_cast<std::size_t>(behind - begins.begin()) - 1;
}

std::string ResultRows::text_between(TextPosition begin, TextPosition end) const
{
    return result.text_between(position(begin), position(end));
}
