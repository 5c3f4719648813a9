#include "viewer/window/scroll_bars.h"

#include <algorithm>

namespace
{

int as_int(std::size_t number)
{
    constexpr std::size_t most = 0x7fffff00;
    return static_cast<int>(std::min(number, most));
}

} // namespace

ScrollBars::ScrollBars(QWidget* parent) : rows(Qt::Vertical, parent), pixels(Qt::Horizontal, parent)
{
}

void ScrollBars::set_top(std::size_t row)
{
    rows.setValue(as_int(row));
}

void ScrollBars::move_by(int row_count, int pixel_count)
{
    rows.setValue(rows.value() + row_count);
    pixels.setValue(pixels.value() + pixel_count);
}

void ScrollBars::set_rows(std::size_t count, std::size_t page)
{
    rows.setRange(0, as_int(count - std::min(count, page)));
    rows.setPageStep(as_int(page));
}

void ScrollBars::set_width(qreal widest, const TextColumn& text, const ViewStyle& style)
{
    const int cell = static_cast<int>(style.metrics.cell());
    const int room = static_cast<int>(text.text_width());
    const int beyond = static_cast<int>(widest) + 2 * cell - room;
    pixels.setRange(0, style.options.wrap ? 0 : std::max(beyond, 0));
    pixels.setPageStep(room);
    pixels.setSingleStep(static_cast<int>(style.metrics.cell() * 4));
    pixels.setVisible(pixels.maximum() > 0);
}

void ScrollBars::reveal_across(const TextColumn& text, TextPosition place,
                               const GlyphMetrics& metrics)
{
    const int x = text.rectangle_of(place).x();
    const int left = text.width() - static_cast<int>(text.text_width()) - text_inset;
    const int margin = static_cast<int>(metrics.cell() * 4);
    if (x < left)
        pixels.setValue(pixels.value() + x - left - margin);
    else if (x > text.width() - margin)
        pixels.setValue(pixels.value() + x - text.width() + margin);
}
