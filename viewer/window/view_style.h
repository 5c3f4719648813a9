/*
 * What all painted widgets of one window share: measures, colours and options. Replaced as a whole
 * when one of them changes.
 */
#pragma once

#include "viewer/window/glyph_metrics.h"
#include "viewer/window/view_options.h"
#include "viewer/window/viewer_palette.h"

#include <memory>

struct ViewStyle {
    GlyphMetrics metrics;
    ViewerPalette palette;
    ViewOptions options;
};

using SharedStyle = std::shared_ptr<const ViewStyle>;
