/*
 * The colours of the painted views, derived from the system's palette, light or dark. Promises that
 * text keeps a contrast of at least 4.5:1 on every fill it can stand on. Chooses no text colours of
 * its own where the system's will do.
 */
#pragma once

#include <QColor>
#include <QPalette>
#include <array>

/** What a block of lines is, as far as colours are concerned. */
enum class Tint { none, changed, added, removed, conflict, resolved };

constexpr std::array all_tints{Tint::none,    Tint::changed,  Tint::added,
                               Tint::removed, Tint::conflict, Tint::resolved};

/** The ratio of the relative luminances of two opaque colours, from 1 to 21. */
double contrast(const QColor& one, const QColor& other);

class ViewerPalette
{
  public:
    explicit ViewerPalette(const QPalette& system);

    bool is_dark() const { return dark; }

    /** The fill of a line of that tint. */
    QColor pale(Tint tint) const { return pale_fills.at(static_cast<std::size_t>(tint)); }

    /** The fill of the words that differ within such a line. */
    QColor strong(Tint tint) const { return strong_fills.at(static_cast<std::size_t>(tint)); }

    /** The colour of the tint's sign in the margin and of its mark in the overview. */
    QColor mark(Tint tint) const { return marks.at(static_cast<std::size_t>(tint)); }

    QColor text;
    QColor faint_text; // line numbers, signs for white space, folded lines
    QColor background;
    QColor gutter;
    QColor gap; // behind the hatching where a contributor has no line
    QColor hatching;
    QColor current; // the bar beside the difference that is at hand
    QColor selection;
    QColor selected_text;
    QColor found; // a search's hit
    QColor separator;

  private:
    void fill_tints();

    bool dark;
    std::array<QColor, all_tints.size()> pale_fills;
    std::array<QColor, all_tints.size()> strong_fills;
    std::array<QColor, all_tints.size()> marks;
};
