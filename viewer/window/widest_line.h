/*
 * How wide a text is, so that it can be scrolled across.
 */
#pragma once

#include "viewer/core/text.h"
#include "viewer/window/glyph_metrics.h"

/** The width of the widest line, at least `widest`. */
qreal widest_line(const Text& text, const GlyphMetrics& metrics, qreal widest);
