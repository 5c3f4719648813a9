#include "viewer/window/run_painter.h"

#include <QRectF>
#include <algorithm>

namespace
{

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
