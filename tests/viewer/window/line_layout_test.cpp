#include "viewer/window/line_layout.h"

#include "tests/viewer/window/window_test.h"
#include "viewer/core/characters.h"

#include <QFontMetricsF>
#include <numeric>

namespace
{

struct NamedLine {
    const char* name;
    std::string text;
};

void PrintTo(const NamedLine& line, std::ostream* out)
{
    *out << line.name;
}

class Lines : public testing::TestWithParam<NamedLine>
{};

TEST_P(Lines, APlacesCharacterIsFoundAtThatPlace)
{
    const SharedStyle style = style_with();
    const std::string& text = GetParam().text;
    const LineShape shape(text, style->metrics);

    for (std::size_t byte = 0; byte < text.size();) {
        EXPECT_EQ(shape.byte_at(shape.x_of(byte) + 0.01), byte);
        take_character(text, byte);
    }
    EXPECT_DOUBLE_EQ(shape.x_of(text.size()), shape.width());
}

TEST_P(Lines, RunsFollowOneAnotherAndCoverTheLine)
{
    const SharedStyle style = style_with();
    const LineShape shape(GetParam().text, style->metrics);

    std::size_t byte = 0;
    for (const LineRun& run : shape.runs(0, shape.width())) {
        EXPECT_EQ(run.bytes.begin, byte);
        byte = run.bytes.end;
    }
    EXPECT_EQ(byte, GetParam().text.size());
}

INSTANTIATE_TEST_SUITE_P(
    All, Lines,
    testing::Values(NamedLine{"Empty", ""}, NamedLine{"Ascii", "int main()"},
                    NamedLine{"Tabs", "\ta\tbc\t"}, NamedLine{"Umlauts", "Gr\u00fc\u00dfe"},
                    NamedLine{"WordsOfOtherFonts", "\u65e5\u672c x \u8a9e \u30c6y"},
                    NamedLine{"Labels", std::string("a\0b\x1b\u202e.", 8)},
                    NamedLine{"ManyChunks",
                              [] {
                                  std::string text;
                                  for (int count = 0; count < 3000; ++count)
                                      text += "\u00e4b";
                                  return text;
                              }()}),
    [](const auto& line) { return std::string(line.param.name); });

TEST(LineShape, OfAVeryLongLineOnlyWhatIsSeenIsLaidOut)
{
    const SharedStyle style = style_with();
    for (const std::string& unit : {std::string("word "), std::string("w\u00f6rd ")}) {
        std::string text;
        while (text.size() < 2000000)
            text += unit;
        const LineShape shape(text, style->metrics);
        const double middle = shape.width() / 2;

        const auto runs = shape.runs(middle, middle + 500);

        const auto characters = std::accumulate(
            runs.begin(), runs.end(), qsizetype{0},
            [](qsizetype sum, const LineRun& run) { return sum + run.text.size(); });
        EXPECT_LT(characters, 2000);
        EXPECT_LE(runs.front().x, middle);
        EXPECT_GE(runs.back().x + runs.back().width, middle + 500);
    }
}

TEST(LineShape, EachRunIsAsWideAsItIsDrawn)
{
    const SharedStyle style = style_with();
    const LineShape shape("a \u65e5\u672c \u8a9e \u2260 \u0416x", style->metrics);

    for (const LineRun& run : shape.runs(0, shape.width()))
        EXPECT_NEAR(QFontMetricsF(style->metrics.font()).horizontalAdvance(run.text), run.width,
                    0.5)
            << run.text.toStdString();
}

TEST(LineShape, AMarkStaysWithItsLetter)
{
    const SharedStyle style = style_with();
    const std::string text = "e\u0301x";
    const LineShape shape(text, style->metrics);

    EXPECT_NEAR(shape.width(), 2 * style->metrics.cell(), 1);
}

TEST(LineShape, AStretchOfMixedDirectionsCoversEachOfItsCharacters)
{
    const SharedStyle style = style_with();
    const std::string text = "ab \u05d0\u05d1\u05d2 cd";
    const LineShape shape(text, style->metrics);

    const auto extents = shape.extents({0, text.size()}, 0, shape.width());

    double covered = 0;
    for (const auto& [left, right] : extents)
        covered += right - left;
    EXPECT_NEAR(covered, shape.width(), 1);
}

} // namespace
