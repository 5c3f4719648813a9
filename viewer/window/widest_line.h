/*
 * How wide texts are, so that they can be scrolled across. Going through all lines of a large text
 * takes longer than a window may keep its user waiting, so it is done in pieces.
 */
#pragma once

#include "viewer/core/text.h"
#include "viewer/window/glyph_metrics.h"

class WidestLine
{
  public:
    /** Begins with these texts. */
    void start(Texts measured);

    /** Goes through some lines more. False when that were the last ones. */
    bool go_on(const GlyphMetrics& metrics);

    /** Of the lines so far. */
    qreal width() const { return widest; }

  private:
    void measure(std::string_view measured, const GlyphMetrics& metrics);

    Texts texts{};
    std::size_t text = 0;
    std::size_t line = 0;
    qreal widest = 0;
};
