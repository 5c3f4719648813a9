#include "viewer/window/line_wrapping.h"

#include "viewer/core/characters.h"

std::vector<std::size_t> wrap_line(std::string_view line, qreal width, const GlyphMetrics& metrics)
{
    std::vector<std::size_t> parts{0};
    const auto cells = static_cast<qreal>(line.size());
    if (metrics.is_monospaced() && cells * metrics.cell() <= width && is_printable_ascii(line))
        return parts;
    qreal x = 0;
    std::size_t after_space = 0;
    for (std::size_t at = 0; at < line.size();) {
        const std::size_t here = at;
        const char32_t character = take_character(line, at);
        const Glyph glyph = metrics.glyph(character);
        const auto place = [&](qreal from) {
            return glyph.kind == GlyphKind::tab ? metrics.tab_end(from)
                                                : from + static_cast<qreal>(glyph.advance);
        };
        if (place(x) > width && here > parts.back() && character != U' ') {
            const bool at_word = after_space > parts.back() + (here - parts.back()) / 2;
            parts.push_back(at_word ? after_space : here);
            x = 0;
            for (std::size_t moved = parts.back(); moved < here;)
                x += static_cast<qreal>(metrics.glyph(take_character(line, moved)).advance);
        }
        x = place(x);
        if (character == U' ' || glyph.kind == GlyphKind::tab)
            after_space = at;
    }
    return parts;
}
