#include "viewer/window/row_painter.h"

#include "viewer/window/numbers.h"
#include "viewer/window/run_painter.h"

#include <QCoreApplication>
#include <algorithm>

namespace
{

constexpr int current_bar = 4;

QRect margin_of(const RowLook& look)
{
    return {look.area.left(), look.area.top(), look.margin, look.area.height()};
}

QRect text_area(const RowLook& look)
{
    return look.area.adjusted(look.margin, 0, 0, 0);
}

QPointF text_origin(const RowLook& look)
{
    return {look.area.left() + look.margin + text_inset - look.scrolled,
            static_cast<qreal>(look.area.top())};
}

void paint_margin(QPainter& painter, const PaintedRow& row, const RowLook& look,
                  const ViewStyle& style)
{
    const QRect margin = margin_of(look);
    const GlyphMetrics& metrics = style.metrics;
    const int sign_width = static_cast<int>(metrics.cell() * 2);
    const int base_line = margin.top() + metrics.ascent();
    painter.fillRect(margin, style.palette.gutter);
    if (row.is_current)
        painter.fillRect(margin.left(), margin.top(), current_bar, margin.height(),
                         style.palette.current);
    painter.setFont(metrics.font());
    if (row.number > 0) {
        const QString number = QString::number(row.number);
        const qreal width = static_cast<qreal>(number.size()) * metrics.cell();
        painter.setPen(style.palette.faint_text);
        painter.drawText(QPointF(margin.right() - sign_width - width, base_line), number);
    }
    if (!row.sign.isNull()) {
        painter.setPen(style.palette.mark(row.tint));
        painter.drawText(QPointF(margin.right() - metrics.cell() * 1.5, base_line), row.sign);
    }
}

void paint_gap(QPainter& painter, const QRect& area, const ViewerPalette& palette)
{
    constexpr int distance = 8;
    painter.save();
    painter.setClipRect(area);
    painter.fillRect(area, palette.gap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette.hatching, 1));
    // The lines of rows below one another meet.
    const int phase = (area.left() + area.bottom() + 1) % distance;
    for (int x = area.left() - area.height() - phase; x < area.right() + distance; x += distance)
        painter.drawLine(QPointF(x, area.bottom() + 1), QPointF(x + area.height(), area.top()));
    painter.restore();
}

void paint_fold(QPainter& painter, const PaintedRow& row, const RowLook& look,
                const ViewStyle& style)
{
    const ViewerPalette& palette = style.palette;
    const int middle = look.area.center().y();
    const QString text =
        QCoreApplication::translate("RowPainter", "Equal lines: %1").arg(grouped(row.hidden));
    painter.fillRect(look.area, palette.gutter);
    painter.setPen(palette.separator);
    painter.drawLine(look.area.left(), middle, look.area.right(), middle);
    const QFontMetricsF metrics(style.metrics.font());
    const QRectF box(look.area.left() + look.margin + text_inset, look.area.top(),
                     metrics.horizontalAdvance(text) + style.metrics.cell() * 2,
                     look.area.height());
    painter.fillRect(box, palette.gutter);
    painter.setPen(palette.faint_text);
    painter.setFont(style.metrics.font());
    painter.drawText(
        QPointF(box.left() + style.metrics.cell(), look.area.top() + style.metrics.ascent()), text);
}

void fill_span(QPainter& painter, Span bytes, const PaintedRow& row, const RowLook& look,
               const LineShape& shape, const QColor& colour)
{
    const Span part{std::max(bytes.begin, row.part.begin), std::min(bytes.end, row.part.end)};
    if (part.begin >= part.end)
        return;
    const QRect area = text_area(look);
    const qreal origin = text_origin(look).x();
    const Span in_part{part.begin - row.part.begin, part.end - row.part.begin};
    const qreal from = area.left() - origin;
    const qreal to = area.right() - origin;
    for (const auto& [left, right] : shape.extents(in_part, from, to)) {
        const qreal begin = std::max(left, from);
        const qreal end = std::min(right, to + 1);
        if (begin < end)
            painter.fillRect(QRectF(origin + begin, area.top(), end - begin, area.height()),
                             colour);
    }
}

QString end_name(LineEnd end)
{
    switch (end) {
    case LineEnd::lf:
        return QStringLiteral("LF");
    case LineEnd::crlf:
        return QStringLiteral("CRLF");
    case LineEnd::cr:
        return QStringLiteral("CR");
    case LineEnd::none:
        break;
    }
    return QStringLiteral("\u2205"); // nothing: the end of the file
}

void paint_end(QPainter& painter, const PaintedRow& row, const RowLook& look, qreal x,
               const ViewStyle& style)
{
    if (look.end_selected)
        painter.fillRect(QRectF(x, look.area.top(), style.metrics.cell() * 0.6, look.area.height()),
                         style.palette.selection);
    if (!row.end || (!style.options.white_space && !row.end_differs))
        return;
    const QString name = end_name(*row.end);
    QFont small = style.metrics.font();
    small.setPointSizeF(small.pointSizeF() * 0.7);
    painter.setFont(small);
    painter.setPen(row.end_differs ? style.palette.text : style.palette.faint_text);
    painter.drawText(
        QPointF(x + style.metrics.cell() / 2, look.area.top() + style.metrics.ascent()), name);
}

void paint_text(QPainter& painter, const PaintedRow& row, const RowLook& look,
                const LineShape& shape, const ViewStyle& style)
{
    const QRect area = text_area(look);
    const QPointF origin = text_origin(look);
    const ViewerPalette& palette = style.palette;
    const auto runs = shape.runs(area.left() - origin.x(), area.right() - origin.x());
    const LineColours colours{palette.text, palette.faint_text, style.options.white_space};
    draw_runs(painter, runs, origin, style.metrics, colours);
    paint_end(painter, row, look, origin.x() + shape.width(), style);
    if (!look.selected)
        return;
    painter.save();
    QRegion region;
    const Span part{std::max(look.selected->begin, row.part.begin),
                    std::min(look.selected->end, row.part.end)};
    if (part.begin < part.end)
        for (const auto& [left, right] :
             shape.extents({part.begin - row.part.begin, part.end - row.part.begin},
                           area.left() - origin.x(), area.right() - origin.x())) {
            const qreal begin = std::max(origin.x() + left, static_cast<qreal>(area.left()));
            const qreal end = std::min(origin.x() + right, static_cast<qreal>(area.right() + 1));
            region += QRectF(begin, area.top(), end - begin, area.height()).toAlignedRect();
        }
    painter.setClipRegion(region & area);
    painter.fillRect(area, palette.selection);
    draw_runs(painter, runs, origin, style.metrics,
              {palette.selected_text, palette.selected_text, style.options.white_space});
    painter.restore();
}

void paint_unresolved(QPainter& painter, const RowLook& look, const ViewStyle& style)
{
    painter.fillRect(text_area(look), style.palette.strong(Tint::conflict));
    painter.setFont(style.metrics.font());
    painter.setPen(style.palette.text);
    painter.drawText(
        QPointF(text_origin(look).x() + style.metrics.cell(),
                look.area.top() + style.metrics.ascent()),
        QCoreApplication::translate("RowPainter", "Conflict: choose a contributor, or type"));
}

} // namespace

int margin_width(std::size_t line_count, const GlyphMetrics& metrics)
{
    const auto digits = std::max<qsizetype>(QString::number(line_count).size(), 3);
    return current_bar + static_cast<int>(metrics.cell() * (static_cast<qreal>(digits) + 2.75));
}

void paint_row(QPainter& painter, const PaintedRow& row, const RowLook& look,
               const LineShape& shape, const ViewStyle& style)
{
    const ViewerPalette& palette = style.palette;
    if (row.kind == RowKind::fold) {
        paint_fold(painter, row, look, style);
        return;
    }
    const QRect area = text_area(look);
    if (row.kind == RowKind::gap) {
        paint_gap(painter, area, palette);
    } else {
        painter.fillRect(area, palette.pale(row.tint));
        painter.save();
        painter.setClipRect(area);
        for (const Span& words : row.strong)
            fill_span(painter, words, row, look, shape, palette.strong(row.tint));
        for (const Span& hit : look.hits)
            fill_span(painter, hit, row, look, shape, palette.found);
        if (row.kind == RowKind::unresolved)
            paint_unresolved(painter, look, style);
        paint_text(painter, row, look, shape, style);
        if (look.caret) {
            const qreal x = text_origin(look).x() + shape.x_of(*look.caret - row.part.begin);
            painter.fillRect(QRectF(x - 0.5, area.top(), 2, area.height()), palette.text);
        }
        painter.restore();
    }
    paint_margin(painter, row, look, style);
}

void paint_below(QPainter& painter, const QRect& area, int margin, const ViewerPalette& palette)
{
    painter.fillRect(area, palette.background);
    painter.fillRect(area.left(), area.top(), margin, area.height(), palette.gutter);
}
