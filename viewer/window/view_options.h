/*
 * What the user chose about the views, for all windows, and how it is kept from one to the next.
 */
#pragma once

#include "viewer/core/line_matching.h"

#include <QByteArray>

struct ViewOptions {
    bool wrap = false;
    bool white_space = false; // shown
    bool collapse = false;    // long stretches of equal lines
    int font_growth = 0;      // in points, from the system's size
    int tab_cells = 8;
    CompareOptions compare{};

    bool operator==(const ViewOptions&) const = default;
};

inline constexpr int most_font_growth = 30;
inline constexpr int least_font_growth = -5;

ViewOptions load_view_options();
void save_view_options(const ViewOptions& options);

/** The window's place and size as Qt tells it; empty where none is known. */
QByteArray load_geometry(const char* window);
void save_geometry(const char* window, const QByteArray& geometry);
