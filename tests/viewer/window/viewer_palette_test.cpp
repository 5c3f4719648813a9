// The colours, computed for light, dark and unhelpful system palettes.
#include "viewer/window/viewer_palette.h"

#include <gtest/gtest.h>
#include <ostream>
#include <set>

namespace
{

constexpr double required = 4.5;

struct SystemColours {
    const char* name;
    QColor text, base, highlight, highlighted_text;
};

void PrintTo(const SystemColours& colours, std::ostream* out)
{
    *out << colours.name;
}

class ReadableColours : public testing::TestWithParam<SystemColours>
{
  public:
    static ViewerPalette palette()
    {
        const SystemColours& colours = GetParam();
        QPalette system;
        system.setColor(QPalette::Text, colours.text);
        system.setColor(QPalette::Base, colours.base);
        system.setColor(QPalette::Highlight, colours.highlight);
        system.setColor(QPalette::HighlightedText, colours.highlighted_text);
        return ViewerPalette(system);
    }
};

TEST_P(ReadableColours, TextIsReadableOnEveryFill)
{
    const ViewerPalette palette = ReadableColours::palette();

    for (const Tint tint : all_tints) {
        EXPECT_GE(contrast(palette.text, palette.pale(tint)), required) << static_cast<int>(tint);
        EXPECT_GE(contrast(palette.text, palette.strong(tint)), required) << static_cast<int>(tint);
    }
    EXPECT_GE(contrast(palette.text, palette.background), required);
    EXPECT_GE(contrast(palette.text, palette.found), required);
    EXPECT_GE(contrast(palette.text, palette.gap), required);
}

TEST_P(ReadableColours, NumbersAndSignsAreReadableInTheMargin)
{
    const ViewerPalette palette = ReadableColours::palette();

    EXPECT_GE(contrast(palette.faint_text, palette.gutter), required);
    for (const Tint tint : all_tints) {
        if (tint == Tint::none)
            continue;
        EXPECT_GE(contrast(palette.mark(tint), palette.gutter), required) << static_cast<int>(tint);
    }
}

TEST_P(ReadableColours, SelectedTextIsReadable)
{
    const ViewerPalette palette = ReadableColours::palette();

    EXPECT_GE(contrast(palette.selected_text, palette.selection), required);
}

TEST_P(ReadableColours, FillsOfDifferentTintsDiffer)
{
    const ViewerPalette palette = ReadableColours::palette();

    std::set<QRgb> fills;
    for (const Tint tint : all_tints)
        fills.insert(palette.pale(tint).rgb());
    EXPECT_EQ(fills.size(), all_tints.size());
}

INSTANTIATE_TEST_SUITE_P(
    Systems, ReadableColours,
    testing::Values(
        SystemColours{"Light", Qt::black, Qt::white, {0x30, 0x8c, 0xc6}, Qt::white},
        SystemColours{"Dark", Qt::white, {0x23, 0x26, 0x29}, {0x3d, 0xae, 0xe9}, Qt::white},
        SystemColours{"Black", {0xc0, 0xc0, 0xc0}, Qt::black, {0x80, 0x40, 0}, Qt::white},
        SystemColours{
            "Cream", {0x65, 0x7b, 0x83}, {0xfd, 0xf6, 0xe3}, {0x26, 0x8b, 0xd2}, Qt::white},
        SystemColours{"Night", {0x83, 0x94, 0x96}, {0, 0x2b, 0x36}, {0x26, 0x8b, 0xd2}, Qt::black},
        SystemColours{"Faint", {0x99, 0x99, 0x99}, Qt::white, {0xdd, 0xdd, 0xdd}, Qt::white},
        SystemColours{"Middle", Qt::black, {0x80, 0x80, 0x80}, {0x70, 0x70, 0x70}, Qt::black}),
    [](const auto& colours) { return std::string(colours.param.name); });

} // namespace
