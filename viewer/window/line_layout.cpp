#include "viewer/window/line_layout.h"

#include "viewer/core/characters.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr std::size_t chunk_characters = 512;

} // namespace

LineShape::LineShape(std::string_view line, const GlyphMetrics& glyphs)
    : text(line), metrics(&glyphs), even(glyphs.is_monospaced() && is_printable_ascii(line))
{
    if (even)
        end = {text.size(), static_cast<qreal>(text.size()) * metrics->cell()};
    else
        find_chunks();
}

void LineShape::find_chunks()
{
    std::size_t in_chunk = 0;
    Place place;
    chunks.push_back(place);
    while (place.byte < text.size()) {
        const std::size_t here = place.byte;
        const char32_t character = take_character(text, place.byte);
        const Glyph glyph = metrics->glyph(character);
        if (in_chunk >= chunk_characters && glyph.advance > 0) { // marks stay with their letter
            chunks.push_back({here, place.x});
            in_chunk = 0;
        }
        ++in_chunk;
        place.x = glyph.kind == GlyphKind::tab ? metrics->tab_end(place.x)
                                               : place.x + static_cast<qreal>(glyph.advance);
    }
    end = place;
    if (chunks.size() == 1)
        if (const auto all = chunk_runs(0); !all.empty())
            end.x = all.back().x + all.back().width;
}

LineShape::Place LineShape::chunk_end(std::size_t chunk) const
{
    return chunk + 1 < chunks.size() ? chunks[chunk + 1] : end;
}

std::vector<LineRun> LineShape::chunk_runs(std::size_t chunk) const
{
    const std::size_t behind = chunk_end(chunk).byte;
    std::vector<LineRun> runs;
    qreal x = chunks[chunk].x;
    for (std::size_t at = chunks[chunk].byte; at < behind;) {
        const std::size_t here = at;
        const Glyph glyph = metrics->glyph(take_character(text, at));
        if (runs.empty() || !continues(runs.back(), glyph.kind)) {
            if (!runs.empty()) {
                finish(runs.back(), text, *metrics);
                x = runs.back().x + runs.back().width;
            }
            runs.push_back({.kind = glyph.kind, .bytes = {here, here}, .x = x});
        }
        LineRun& run = runs.back();
        if (glyph.kind == GlyphKind::shaped)
            run.kind = GlyphKind::shaped;
        run.bytes.end = at;
        run.width += glyph.kind == GlyphKind::tab ? metrics->tab_end(x) - x
                                                  : static_cast<qreal>(glyph.advance);
    }
    if (!runs.empty())
        finish(runs.back(), text, *metrics);
    return runs;
}

std::size_t LineShape::chunk_of_byte(std::size_t byte) const
{
    const auto behind = std::ranges::upper_bound(chunks, byte, {}, &Place::byte);
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(behind - chunks.begin(), 1) - 1);
}

std::size_t LineShape::chunk_of_x(qreal x) const
{
    const auto behind = std::ranges::upper_bound(chunks, x, {}, &Place::x);
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(behind - chunks.begin(), 1) - 1);
}

std::vector<LineRun> LineShape::runs(qreal from, qreal to) const
{
    if (even) {
        const auto bound = [&](qreal x) {
            return static_cast<std::size_t>(
                std::clamp(x / metrics->cell(), 0.0, static_cast<qreal>(text.size())));
        };
        const std::size_t begin = bound(from);
        const std::size_t behind = std::min(bound(to) + 1, text.size());
        const auto length = static_cast<qreal>(behind - begin);
        return {{.bytes = {begin, behind},
                 .x = static_cast<qreal>(begin) * metrics->cell(),
                 .width = length * metrics->cell(),
                 .text = QString::fromLatin1(text.data() + begin,
                                             static_cast<qsizetype>(behind - begin))}};
    }
    std::vector<LineRun> seen;
    for (std::size_t chunk = chunk_of_x(from); chunk < chunks.size() && chunks[chunk].x <= to;
         ++chunk)
        for (LineRun& run : chunk_runs(chunk))
            seen.push_back(std::move(run));
    return seen;
}

qreal LineShape::x_of(std::size_t byte) const
{
    if (even)
        return static_cast<qreal>(std::min(byte, text.size())) * metrics->cell();
    for (const LineRun& run : chunk_runs(chunk_of_byte(byte)))
        if (byte < run.bytes.end)
            return x_in_run(run, text, byte, *metrics);
    return byte >= text.size() ? end.x : chunk_end(chunk_of_byte(byte)).x;
}

std::size_t LineShape::byte_at(qreal x) const
{
    if (x <= 0)
        return 0;
    if (even)
        return std::min(static_cast<std::size_t>(std::lround(x / metrics->cell())), text.size());
    for (const LineRun& run : chunk_runs(chunk_of_x(x)))
        if (x < run.x + run.width)
            return byte_in_run(run, text, x, *metrics);
    return chunk_end(chunk_of_x(x)).byte;
}

std::vector<std::pair<qreal, qreal>> LineShape::extents(Span bytes, qreal from, qreal to) const
{
    if (even)
        return {{x_of(bytes.begin), x_of(bytes.end)}};
    std::vector<std::pair<qreal, qreal>> found;
    for (std::size_t chunk = std::max(chunk_of_x(from), chunk_of_byte(bytes.begin));
         chunk < chunks.size() && chunks[chunk].x <= to && chunks[chunk].byte < bytes.end; ++chunk)
        for (const LineRun& run : chunk_runs(chunk)) {
            const Span part{std::max(run.bytes.begin, bytes.begin),
                            std::min(run.bytes.end, bytes.end)};
            if (part.begin < part.end)
                add_extents(found, run, text, part, *metrics);
        }
    return found;
}
