/*
 * One line's characters placed side by side. Only the part that is asked for is laid out, a
 * chunk at a time, so that a line of megabytes costs no more than a short one once its chunks are
 * known. Positions are bytes of the line; x is measured from the line's beginning.
 */
#pragma once

#include "viewer/window/line_run.h"

#include <string_view>
#include <utility>
#include <vector>

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
