/*
 * One line's characters placed side by side, and drawn. Only the part that is asked for is laid
 * out, a chunk at a time, so that a line of megabytes costs no more than a short one once its
 * chunks are known. Positions are bytes of the line; x is measured from the line's beginning.
 */
#pragma once

#include "viewer/core/changed_words.h"
#include "viewer/window/glyph_metrics.h"

#include <QColor>
#include <QPainter>
#include <QRectF>
#include <QTextLayout>
#include <memory>
#include <string_view>
#include <vector>

/** A stretch of a line that is drawn in one piece. */
struct LineRun {
    GlyphKind kind = GlyphKind::plain;
    Span bytes{};
    qreal x = 0;
    qreal width = 0;
    QString text{};                             // of a tab nothing
    std::shared_ptr<const QTextLayout> shape{}; // for shaped
};

/** Where the chunks of a line begin. */
class LineShape
{
  public:
    LineShape(std::string_view line, const GlyphMetrics& glyphs);

    /** With long runs of joining characters an estimate. */
    qreal width() const { return end.x; }

    /** The runs that are seen between two places, and perhaps a few more. */
    std::vector<LineRun> runs(qreal from, qreal to) const;

    /** Where the character at `byte`, or the end of the line, is. */
    qreal x_of(std::size_t byte) const;

    /** The boundary between characters that is nearest to `x`. */
    std::size_t byte_at(qreal x) const;

    /** What a stretch of the line covers; more than one where directions mix. */
    std::vector<std::pair<qreal, qreal>> extents(Span bytes, qreal from, qreal to) const;

  private:
    struct Place {
        std::size_t byte = 0;
        qreal x = 0;
    };

    void find_chunks();
    std::vector<LineRun> chunk_runs(std::size_t chunk) const;
    Place chunk_end(std::size_t chunk) const;
    std::size_t chunk_of_byte(std::size_t byte) const;
    std::size_t chunk_of_x(qreal x) const;

    std::string_view text;
    const GlyphMetrics* metrics;
    bool even; // monospaced printable ASCII: places are products
    std::vector<Place> chunks{};
    Place end{};
};

/** Colours for drawing. */
struct LineColours {
    QColor text;
    QColor faint;
    bool show_white_space = false;
};

/** Draws runs with the line's top left corner at `origin`. */
void draw_runs(QPainter& painter, const std::vector<LineRun>& runs, QPointF origin,
               const GlyphMetrics& metrics, const LineColours& colours);

/** The first bytes of the parts into which a line is broken to fit a width: 0 and perhaps more. */
std::vector<std::size_t> wrap_line(std::string_view line, qreal width, const GlyphMetrics& metrics);
