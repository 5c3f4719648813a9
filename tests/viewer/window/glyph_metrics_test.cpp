#include "tests/viewer/window/window_test.h"

#include <QFontMetricsF>
#include <cmath>

namespace
{

TEST(GlyphMetrics, ALinesAdvancesAddUpToItsWidth)
{
    const SharedStyle style = style_with();
    const QString line(1000, QChar('m'));

    EXPECT_NEAR(QFontMetricsF(style->metrics.font()).horizontalAdvance(line),
                1000 * static_cast<double>(style->metrics.glyph(U'm').advance), 0.5);
}

TEST(GlyphMetrics, LinesAreWholePixelsHighAtEachScale)
{
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        const GlyphMetrics metrics(style_with()->metrics.font(), scale, 8);

        EXPECT_EQ(std::fmod(metrics.line_height() * scale, 1.0), 0.0) << scale;
    }
}

TEST(GlyphMetrics, WhatHasNoPictureIsALabel)
{
    const SharedStyle style = style_with();

    for (const char32_t character : {U'\0', U'\x1b', U'\x7f', U'\x85', U'\u202e', U'\u200b',
                                     U'\ufeff', U'\uffff', char32_t{0x10ffff}})
        EXPECT_EQ(style->metrics.glyph(character).kind, GlyphKind::label)
            << static_cast<unsigned>(character);
    EXPECT_EQ(GlyphMetrics::label_of(0), "NUL");
    EXPECT_EQ(GlyphMetrics::label_of(0x202e), "202E");
}

TEST(GlyphMetrics, WhatJoinsOrRunsFromRightToLeftIsShaped)
{
    const SharedStyle style = style_with();

    for (const char32_t character : {U'\u05d0', U'\u0645', U'\u0301', U'\u0915', U'\u1100'})
        EXPECT_EQ(style->metrics.glyph(character).kind, GlyphKind::shaped)
            << static_cast<unsigned>(character);
    for (const char32_t character : {U'a', U'\u00e4', U'\u0416'})
        EXPECT_EQ(style->metrics.glyph(character).kind, GlyphKind::plain)
            << static_cast<unsigned>(character);
}

TEST(GlyphMetrics, ATabGoesToTheNextStop)
{
    const SharedStyle style = style_with();
    const double cell = style->metrics.cell();

    EXPECT_DOUBLE_EQ(style->metrics.tab_end(0), 8 * cell);
    EXPECT_DOUBLE_EQ(style->metrics.tab_end(7 * cell), 8 * cell);
    EXPECT_DOUBLE_EQ(style->metrics.tab_end(8 * cell), 16 * cell);
}

} // namespace
