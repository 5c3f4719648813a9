/*
 * Where a line is broken to fit a width: behind white space in the second half of what fits, or
 * else between any two characters.
 */
#pragma once

#include "viewer/window/glyph_metrics.h"

#include <string_view>
#include <vector>

/** The first bytes of the parts into which a line is broken to fit a width: 0 and perhaps more. */
std::vector<std::size_t> wrap_line(std::string_view line, qreal width, const GlyphMetrics& metrics);
