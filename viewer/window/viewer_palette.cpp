#include "viewer/window/viewer_palette.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr double least_contrast = 4.6; // a little above 4.5, which the rounding of colours may cost
constexpr int steps = 64;

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

/** `amount` of `over` laid on `under`. */
QColor blend(const QColor& under, const QColor& over, double amount)
{
    const auto channel = [amount](int low, int high) {
        return static_cast<int>(std::lround(low + (high - low) * amount));
    };
    return {channel(under.red(), over.red()), channel(under.green(), over.green()),
            channel(under.blue(), over.blue())};
}

/** `colour`, taken towards `goal` as far as `on` needs it to be readable. */
QColor readable(const QColor& colour, const QColor& goal, const QColor& on)
{
    for (int step = 0; step < steps; ++step) {
        const QColor tried = blend(colour, goal, static_cast<double>(step) / steps);
        if (contrast(tried, on) >= least_contrast)
            return tried;
    }
    return goal;
}

QColor hue_of(Tint tint)
{
    switch (tint) {
    case Tint::changed:
        return {0x2f, 0x7d, 0xe0};
    case Tint::added:
        return {0x2c, 0xa5, 0x4f};
    case Tint::removed:
        return {0xd9, 0x7a, 0x1e};
    case Tint::conflict:
        return {0xdc, 0x3b, 0x46};
    case Tint::resolved:
        return {0x7a, 0x86, 0x91};
    case Tint::none:
        break;
    }
    return {};
}

} // namespace

double contrast(const QColor& one, const QColor& other)
{
    const double first = luminance(one);
    const double second = luminance(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

ViewerPalette::ViewerPalette(const QPalette& system)
    : text(system.color(QPalette::Active, QPalette::Text)),
      background(system.color(QPalette::Active, QPalette::Base)),
      dark(luminance(background) < luminance(text))
{
    const QColor extreme = dark ? QColor(Qt::white) : QColor(Qt::black);
    // The text must also stand on fills, which lie a little nearer to it than the background.
    while (contrast(text, background) < 7.0 && text != extreme)
        text = blend(text, extreme, 0.25) == text ? extreme : blend(text, extreme, 0.25);
    gutter = blend(background, text, dark ? 0.06 : 0.045);
    faint_text = readable(blend(background, text, 0.5), text, gutter);
    gap = blend(background, text, dark ? 0.07 : 0.05);
    hatching = blend(background, text, dark ? 0.2 : 0.16);
    separator = blend(background, text, 0.22);
    current = system.color(QPalette::Active, QPalette::Highlight);
    selection = blend(background, current, dark ? 0.75 : 0.85);
    const QColor chosen = system.color(QPalette::Active, QPalette::HighlightedText);
    const QColor opposite = luminance(selection) < 0.18 ? Qt::white : Qt::black;
    selected_text = readable(chosen, opposite, selection);
    found =
        readable(blend(background, QColor(0xff, 0xd0, 0x20), dark ? 0.45 : 0.75), background, text);
    fill_tints();
}

void ViewerPalette::fill_tints()
{
    for (const Tint tint : all_tints) {
        const auto index = static_cast<std::size_t>(tint);
        const QColor hue = tint == Tint::none ? background : hue_of(tint);
        pale_fills.at(index) =
            readable(blend(background, hue, dark ? 0.2 : 0.13), background, text);
        strong_fills.at(index) =
            readable(blend(background, hue, dark ? 0.45 : 0.34), background, text);
        marks.at(index) = readable(hue, text, gutter);
    }
}
