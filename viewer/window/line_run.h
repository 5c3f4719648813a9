/*
 * A stretch of a line that is drawn in one piece: its characters have one kind, and are placed by
 * their advances or by a layout of their own. Positions are bytes of the line, which is passed
 * again to whatever looks at characters; x is measured from the line's beginning.
 */
#pragma once

#include "viewer/core/changed_words.h"
#include "viewer/window/glyph_metrics.h"

#include <QString>
#include <QTextLayout>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

struct LineRun {
    GlyphKind kind = GlyphKind::plain;
    Span bytes{};
    qreal x = 0;
    qreal width = 0;
    QString text{};                             // of a tab nothing
    std::shared_ptr<const QTextLayout> shape{}; // for shaped
};

/** Whether characters of that kind are drawn as they are. */
bool is_drawn_as_text(GlyphKind kind);

/** Whether a character of that kind goes on the run that it follows. */
bool continues(const LineRun& run, GlyphKind kind);

/** Gives a run that has all its bytes its text, and its shape where it needs one. */
void finish(LineRun& run, std::string_view line, const GlyphMetrics& metrics);

/** Where in a run a byte of the line is. */
qreal x_in_run(const LineRun& run, std::string_view line, std::size_t byte,
               const GlyphMetrics& metrics);

/** The boundary between characters of a run that is nearest to `x`. */
std::size_t byte_in_run(const LineRun& run, std::string_view line, qreal x,
                        const GlyphMetrics& metrics);

/** Adds from where to where a part of a run is seen; several stretches where directions mix. */
void add_extents(std::vector<std::pair<qreal, qreal>>& extents, const LineRun& run,
                 std::string_view line, Span part, const GlyphMetrics& metrics);
