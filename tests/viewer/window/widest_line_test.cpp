#include "viewer/window/widest_line.h"

#include "tests/viewer/window/window_test.h"

#include <algorithm>

namespace
{

Texts texts_with(std::initializer_list<std::string> contents)
{
    Texts texts;
    std::ranges::transform(contents, std::back_inserter(texts), [](const std::string& content) {
        return std::make_shared<const Text>(content, 0, false);
    });
    return texts;
}

/** In cells, to the next whole one. */
int measured(WidestLine& widest, const GlyphMetrics& metrics)
{
    while (widest.go_on(metrics)) {
    }
    return qRound(widest.width() / metrics.cell());
}

TEST(WidestLine, IsTheWidestOfAllTexts)
{
    const SharedStyle style = style_with();
    WidestLine widest;

    widest.start(texts_with({"12345\n1234567\n", "", "123456\n123456789\n1\n"}));

    EXPECT_EQ(measured(widest, style->metrics), 9);
}

TEST(WidestLine, MayBeAShortOneWithTabs)
{
    const SharedStyle style = style_with();
    WidestLine widest;

    widest.start(texts_with({"123456789012345678\n\t\t\t1\n"}));

    EXPECT_EQ(measured(widest, style->metrics), 25);
}

TEST(WidestLine, OfALargeTextIsFoundInPieces)
{
    const SharedStyle style = style_with();
    std::string text;
    for (int line = 0; line < 200'000; ++line)
        text += "not the widest\n";
    WidestLine widest;

    widest.start(texts_with({text + "this is the widest\n"}));

    EXPECT_TRUE(widest.go_on(style->metrics));
    EXPECT_EQ(measured(widest, style->metrics), 18);
}

TEST(WidestLine, StartsAnew)
{
    const SharedStyle style = style_with();
    WidestLine widest;
    widest.start(texts_with({"a wide line\n"}));
    measured(widest, style->metrics);

    widest.start(texts_with({"narrow\n"}));

    EXPECT_EQ(measured(widest, style->metrics), 6);
}

} // namespace
