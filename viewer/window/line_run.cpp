#include "viewer/window/line_run.h"

#include "viewer/core/characters.h"

#include <QGlyphRun>
#include <algorithm>

namespace
{

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

} // namespace

bool is_drawn_as_text(GlyphKind kind)
{
    return kind == GlyphKind::plain || kind == GlyphKind::foreign || kind == GlyphKind::shaped;
}

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

void add_extents(std::vector<std::pair<qreal, qreal>>& extents, const LineRun& run,
                 std::string_view line, Span part, const GlyphMetrics& metrics)
{
    if (run.shape)
        add_shaped_extents(extents, run, line, part);
    else
        extents.emplace_back(x_in_run(run, line, part.begin, metrics),
                             x_in_run(run, line, part.end, metrics));
}
