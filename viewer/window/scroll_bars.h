/*
 * The two scroll bars of columns of text, down by rows and across by pixels, and what they come to
 * for so many rows of such a width. They do not scroll anything themselves.
 */
#pragma once

#include "viewer/window/text_column.h"

#include <QScrollBar>

class ScrollBars
{
  public:
    explicit ScrollBars(QWidget* parent);

    QScrollBar& down() { return rows; }
    QScrollBar& across() { return pixels; }

    /** The row at the top. */
    std::size_t top() const { return static_cast<std::size_t>(rows.value()); }
    int left() const { return pixels.value(); }

    /** As far as there are rows. */
    void set_top(std::size_t row);
    void move_by(int row_count, int pixel_count);

    void set_rows(std::size_t count, std::size_t page);

    /** For lines up to a width in columns like `text`. The bar is hidden where all can be seen. */
    void set_width(qreal widest, const TextColumn& text, const ViewStyle& style);

    /** Scrolls across to a place in a column. */
    void reveal_across(const TextColumn& text, TextPosition place, const GlyphMetrics& metrics);

  private:
    QScrollBar rows;
    QScrollBar pixels;
};
