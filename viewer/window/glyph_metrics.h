/*
 * What lines of text measure in one font: the same height for every line, whatever fonts stand in
 * for missing characters, and the advance of each character, so that the place of a character in a
 * line is a sum. Characters that a sum cannot place, since they join or run from right to left, are
 * told apart, and so are those that would be invisible, which are shown as labels.
 */
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QRawFont>
#include <QString>
#include <array>
#include <cstdint>
#include <memory>

enum class GlyphKind : std::uint8_t {
    unknown, // not looked up yet
    plain,   // placed by its advance
    foreign, // too, but another font has it: its neighbours must not be drawn with it
    shaped,  // needs a layout of its surroundings
    tab,
    label, // has no picture: a control character, a mark of direction
};

struct Glyph {
    GlyphKind kind = GlyphKind::unknown;
    float advance = 0; // for shaped an estimate; for a tab nothing
};

class GlyphMetrics
{
  public:
    /** Line heights become whole numbers of pixels at `scale`. */
    GlyphMetrics(const QFont& wanted, qreal scale, int tab_cells);

    const QFont& font() const { return text_font; }
    int line_height() const { return height; }
    int ascent() const { return base_line; }

    /** The advance of a digit, and of all ASCII in a monospaced font. */
    qreal cell() const { return cell_width; }
    bool is_monospaced() const { return monospaced; }

    /** Where a tab that begins at `x` ends. */
    qreal tab_end(qreal x) const;

    /** Measured once for each character that is asked for. */
    Glyph glyph(char32_t character) const;

    /** What stands for a character without a picture. */
    static QString label_of(char32_t character);

  private:
    using Page = std::array<Glyph, 256>;

    Glyph measure(char32_t character) const;

    QFont text_font;
    QFontMetricsF metrics;
    QRawFont raw_font;
    int height = 0;
    int base_line = 0;
    qreal cell_width;
    qreal tab_width;
    bool monospaced;
    mutable std::array<std::unique_ptr<Page>, 0x1100> pages{};
};
