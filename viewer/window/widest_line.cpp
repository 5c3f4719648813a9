#include "viewer/window/widest_line.h"

#include "viewer/window/line_layout.h"

#include <algorithm>

qreal widest_line(const Text& text, const GlyphMetrics& metrics, qreal widest)
{
    for (std::size_t index = 0; index < text.line_count(); ++index) {
        const std::string_view line = text.line(index);
        const bool is_short = static_cast<qreal>(line.size()) * metrics.cell() <= widest &&
                              line.find('\t') == std::string_view::npos;
        if (!is_short)
            widest = std::max(widest, LineShape(line, metrics).width());
    }
    return widest;
}
