/*
 * Draws what a line is made of, run by run: characters, labels for those that have no picture, and
 * white space where it is to be seen.
 */
#pragma once

#include "viewer/window/line_run.h"

#include <QColor>
#include <QPainter>
#include <QPointF>
#include <vector>

/** Colours for drawing. */
struct LineColours {
    QColor text;
    QColor faint;
    bool show_white_space = false;
};

/** Draws runs with the line's top left corner at `origin`. */
void draw_runs(QPainter& painter, const std::vector<LineRun>& runs, QPointF origin,
               const GlyphMetrics& metrics, const LineColours& colours);
