/*
 * Paints one row of a column: margin with line number and sign, fill, changed words, hits of a
 * search, selection, text and caret. Knows no widget.
 */
#pragma once

#include "viewer/window/line_layout.h"
#include "viewer/window/row_source.h"
#include "viewer/window/view_style.h"

#include <QPainter>
#include <QRect>
#include <optional>

/** How a row looks beyond what it holds. */
struct RowLook {
    QRect area{}; // of the whole row, the margin included
    int margin = 0;
    qreal scrolled = 0;             // how much of the text is left of the area
    std::optional<Span> selected{}; // bytes of the line
    bool end_selected = false;      // the selection goes on in the next line
    std::vector<Span> hits{};
    std::optional<std::size_t> caret{};
};

/** The margin that line numbers up to `line_count` need. */
int margin_width(std::size_t line_count, const GlyphMetrics& metrics);

/** Between the margin and the text. */
inline constexpr int text_inset = 4;

/** `shape` is that of the row's part of the line. */
void paint_row(QPainter& painter, const PaintedRow& row, const RowLook& look,
               const LineShape& shape, const ViewStyle& style);

/** The area below the last row. */
void paint_below(QPainter& painter, const QRect& area, int margin, const ViewerPalette& palette);
