#include "viewer/window/line_layout.h"

#include "viewer/core/characters.h"

#include <QGlyphRun>
#include <algorithm>
#include <cmath>

namespace
{

constexpr std::size_t chunk_characters = 512;

bool is_printable_ascii(std::string_view text)
{
    unsigned char out_of_range = 0; // no early end: the loop over bytes is vectorised
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        out_of_range |=
            static_cast<unsigned char>(byte < 0x20U) | static_cast<unsigned char>(byte > 0x7eU);
    }
    return out_of_range == 0;
}

QString decoded(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::shared_ptr<const QTextLayout> shape(const QString& text, const QFont& font)
{
    auto layout = std::make_shared<QTextLayout>(text, font);
    QTextOption option;
    option.setTextDirection(Qt::LeftToRight);
    option.setWrapMode(QTextOption::NoWrap);
    layout->setTextOption(option);
    layout->setCacheEnabled(true);
    layout->beginLayout();
    layout->createLine();
    layout->endLayout();
    return layout;
}

/** The index in UTF-16 of a byte of UTF-8. */
int index_of_byte(std::string_view text, std::size_t byte)
{
    int index = 0;
    for (std::size_t at = 0; at < byte && at < text.size();)
        index += take_character(text, at) > 0xffff ? 2 : 1;
    return index;
}

/** The byte of UTF-8 of an index in UTF-16. */
std::size_t byte_of_index(std::string_view text, int index)
{
    std::size_t at = 0;
    for (int passed = 0; passed < index && at < text.size();)
        passed += take_character(text, at) > 0xffff ? 2 : 1;
    return at;
}

bool is_drawn_as_text(GlyphKind kind)
{
    return kind == GlyphKind::plain || kind == GlyphKind::foreign || kind == GlyphKind::shaped;
}

/** Whether a character goes on the run that it follows. */
bool continues(const LineRun& run, GlyphKind kind)
{
    const bool joins = run.kind == GlyphKind::shaped || kind == GlyphKind::shaped;
    return is_drawn_as_text(run.kind) && is_drawn_as_text(kind) && (joins || run.kind == kind);
}

void finish(LineRun& run, std::string_view line, const GlyphMetrics& metrics)
{
    if (run.kind == GlyphKind::tab)
        return;
    const auto bytes = line.substr(run.bytes.begin, run.bytes.end - run.bytes.begin);
    if (run.kind == GlyphKind::label) {
        std::size_t at = 0;
        run.text = GlyphMetrics::label_of(take_character(bytes, at));
        return;
    }
    run.text = decoded(bytes);
    if (run.kind == GlyphKind::shaped) {
        run.shape = shape(run.text, metrics.font());
        run.width = run.shape->lineAt(0).naturalTextWidth();
    }
}

qreal x_in_run(const LineRun& run, std::string_view line, std::size_t byte,
               const GlyphMetrics& metrics)
{
    if (byte >= run.bytes.end && !run.shape)
        return run.x + run.width;
    const auto text = line.substr(run.bytes.begin, run.bytes.end - run.bytes.begin);
    if (run.shape)
        return run.x + run.shape->lineAt(0).cursorToX(index_of_byte(text, byte - run.bytes.begin));
    qreal x = run.x;
    for (std::size_t at = 0; at < byte - run.bytes.begin;)
        x += metrics.glyph(take_character(text, at)).advance;
    return x;
}

std::size_t byte_in_run(const LineRun& run, std::string_view line, qreal x,
                        const GlyphMetrics& metrics)
{
    const auto text = line.substr(run.bytes.begin, run.bytes.end - run.bytes.begin);
    if (run.shape)
        return run.bytes.begin + byte_of_index(text, run.shape->lineAt(0).xToCursor(x - run.x));
    if (!is_drawn_as_text(run.kind))
        return x < run.x + run.width / 2 ? run.bytes.begin : run.bytes.end;
    qreal left = run.x;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t here = at;
        const qreal advance = metrics.glyph(take_character(text, at)).advance;
        if (x < left + advance / 2)
            return run.bytes.begin + here;
        left += advance;
    }
    return run.bytes.end;
}

/** Character by character: neighbours in a line may be apart on the screen. */
void add_shaped_extents(std::vector<std::pair<qreal, qreal>>& extents, const LineRun& run,
                        std::string_view line, Span part)
{
    const auto text = line.substr(run.bytes.begin, run.bytes.end - run.bytes.begin);
    const int end = index_of_byte(text, part.end - run.bytes.begin);
    for (int index = index_of_byte(text, part.begin - run.bytes.begin); index < end; ++index) {
        for (const QGlyphRun& glyphs : run.shape->glyphRuns(index, 1)) {
            const QRectF area = glyphs.boundingRect();
            extents.emplace_back(run.x + area.left(), run.x + area.right());
        }
    }
}

void draw_label(QPainter& painter, const LineRun& run, QPointF origin, const GlyphMetrics& metrics,
                const LineColours& colours)
{
    const QRectF box(origin.x() + run.x + 0.5, origin.y() + 1.5, run.width - 1.5,
                     metrics.line_height() - 3);
    QFont small = metrics.font();
    small.setPointSizeF(small.pointSizeF() * 0.75);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(colours.faint);
    painter.drawRoundedRect(box, 3, 3);
    painter.setFont(small);
    painter.drawText(box, Qt::AlignCenter, run.text);
    painter.restore();
}

void draw_tab(QPainter& painter, const LineRun& run, QPointF origin, const GlyphMetrics& metrics,
              const LineColours& colours)
{
    const qreal middle = origin.y() + metrics.line_height() / 2.0;
    const qreal left = origin.x() + run.x + 1.5;
    const qreal right = origin.x() + run.x + run.width - 2.5;
    const qreal head = metrics.line_height() / 6.0;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(colours.faint);
    painter.drawLine(QPointF(left, middle), QPointF(right, middle));
    painter.drawLine(QPointF(right - head, middle - head), QPointF(right, middle));
    painter.drawLine(QPointF(right - head, middle + head), QPointF(right, middle));
    painter.restore();
}

void draw_spaces(QPainter& painter, const LineRun& run, QPointF origin, const GlyphMetrics& metrics,
                 const LineColours& colours)
{
    const qreal dot = std::max(1.5, metrics.cell() / 5);
    qreal x = run.x;
    for (int index = 0; index < run.text.size(); ++index) {
        const QChar character = run.text.at(index);
        if (run.shape)
            x = run.x + run.shape->lineAt(0).cursorToX(index);
        const qreal advance =
            run.shape ? metrics.cell() : metrics.glyph(character.unicode()).advance;
        if (character.isSpace())
            painter.fillRect(QRectF(origin.x() + x + (advance - dot) / 2,
                                    origin.y() + (metrics.line_height() - dot) / 2, dot, dot),
                             colours.faint);
        x += advance;
    }
}

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
                 .text = decoded(text.substr(begin, behind - begin))}};
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
    for (const LineRun& run : runs(from, to)) {
        const Span part{std::max(run.bytes.begin, bytes.begin), std::min(run.bytes.end, bytes.end)};
        if (part.begin >= part.end)
            continue;
        if (run.shape)
            add_shaped_extents(found, run, text, part);
        else
            found.emplace_back(x_in_run(run, text, part.begin, *metrics),
                               x_in_run(run, text, part.end, *metrics));
    }
    return found;
}

void draw_runs(QPainter& painter, const std::vector<LineRun>& runs, QPointF origin,
               const GlyphMetrics& metrics, const LineColours& colours)
{
    const qreal base_line = origin.y() + metrics.ascent();
    painter.setFont(metrics.font());
    painter.setPen(colours.text);
    for (const LineRun& run : runs) {
        if (run.shape) {
            const qreal rise = run.shape->lineAt(0).ascent();
            run.shape->draw(&painter, {origin.x() + run.x, base_line - rise});
        } else if (run.kind == GlyphKind::label) {
            draw_label(painter, run, origin, metrics, colours);
        } else if (is_drawn_as_text(run.kind)) {
            painter.drawText(QPointF(origin.x() + run.x, base_line), run.text);
        } else if (colours.show_white_space) {
            draw_tab(painter, run, origin, metrics, colours);
        }
        if (colours.show_white_space && !run.text.isEmpty() && run.kind != GlyphKind::label)
            draw_spaces(painter, run, origin, metrics, colours);
    }
}

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
