/*
 * The menus for what the user may choose about the views: how text looks, and what a comparison
 * ignores.
 */
#pragma once

#include "viewer/window/view_options.h"

#include <QMenu>
#include <functional>

/** `current` gives the options as they are when an entry is chosen; `change` takes the new ones. */
struct OptionChanges {
    std::function<ViewOptions()> current;
    std::function<void(const ViewOptions&)> change;
};

void add_view_options(QMenu& menu, const OptionChanges& options);
void add_compare_options(QMenu& menu, const OptionChanges& options);

/** The options with letters larger by some points, or smaller; within limits. */
ViewOptions with_font_growth(ViewOptions options, int points);
