/*
 * Arrows for buttons, painted in the colour of the buttons' text, so that they suit light and dark
 * windows and are sharp at every scale.
 */
#pragma once

#include <QIcon>

enum class ArrowKind { up, down, top, bottom };

/** An icon that paints itself in the application's colours each time it is shown. */
QIcon arrow_icon(ArrowKind kind);
