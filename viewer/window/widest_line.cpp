#include "viewer/window/widest_line.h"

#include "viewer/window/line_layout.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr std::size_t bytes_in_a_piece = 256 * 1024; // about a millisecond

/** No line of that many bytes and tabs is wider. */
qreal most_width(std::string_view line, const GlyphMetrics& metrics)
{
    const auto tabs = static_cast<qreal>(std::ranges::count(line, '\t'));
    const auto others = static_cast<qreal>(line.size()) - tabs;
    return others * metrics.cell() + tabs * metrics.tab_end(0);
}

} // namespace

void WidestLine::start(Texts measured)
{
    texts = std::move(measured);
    text = 0;
    line = 0;
    widest = 0;
}

bool WidestLine::go_on(const GlyphMetrics& metrics)
{
    for (std::size_t passed = 0; text < texts.size(); ++text, line = 0)
        for (const Text& measured = *texts[text]; line < measured.line_count(); ++line) {
            if (passed >= bytes_in_a_piece)
                return true;
            const std::string_view next = measured.line(line);
            measure(next, metrics);
            passed += next.size() + 1;
        }
    return false;
}

void WidestLine::measure(std::string_view measured, const GlyphMetrics& metrics)
{
    if (most_width(measured, metrics) > widest)
        widest = std::max(widest, LineShape(measured, metrics).width());
}
