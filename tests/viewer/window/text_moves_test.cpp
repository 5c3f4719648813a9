#include "viewer/window/text_moves.h"

#include <gtest/gtest.h>

namespace
{

class Source : public RowSource
{
  public:
    explicit Source(std::vector<std::string> all) : lines(std::move(all)) {}

    std::size_t row_count() const override { return lines.size(); }
    PaintedRow row(std::size_t index) const override { return {.line = index}; }
    std::size_t row_of(TextPosition place) const override { return place.line; }
    std::size_t line_count() const override { return lines.size(); }
    std::string_view line(std::size_t index) const override { return lines[index]; }
    std::string text_between(TextPosition /*begin*/, TextPosition /*end*/) const override
    {
        return {};
    }

  private:
    std::vector<std::string> lines;
};

using Place = TextPosition;

TEST(TextMoves, ALetterWithItsMarksIsOneCharacter)
{
    const Source source({"e\u0301x"});

    EXPECT_EQ(next_character(source, {0, 0}), (Place{0, 3}));
    EXPECT_EQ(previous_character(source, {0, 3}), (Place{0, 0}));
}

TEST(TextMoves, JoinedPicturesAreOneCharacter)
{
    const Source source({"\U0001f468\u200d\U0001f469x"});

    EXPECT_EQ(next_character(source, {0, 0}), (Place{0, 11}));
    EXPECT_EQ(previous_character(source, {0, 11}), (Place{0, 0}));
}

TEST(TextMoves, CharactersGoOnInTheNextLine)
{
    const Source source({"a", "b"});

    EXPECT_EQ(next_character(source, {0, 1}), (Place{1, 0}));
    EXPECT_EQ(previous_character(source, {1, 0}), (Place{0, 1}));
    EXPECT_EQ(next_character(source, {1, 1}), (Place{1, 1}));
    EXPECT_EQ(previous_character(source, {0, 0}), (Place{0, 0}));
}

TEST(TextMoves, WordsTakeTheSpaceBehindThem)
{
    const Source source({"one two_2  (x)"});

    EXPECT_EQ(next_word(source, {0, 0}), (Place{0, 4}));
    EXPECT_EQ(next_word(source, {0, 4}), (Place{0, 11}));
    EXPECT_EQ(previous_word(source, {0, 11}), (Place{0, 4}));
    EXPECT_EQ(previous_word(source, {0, 4}), (Place{0, 0}));
}

TEST(TextMoves, AWordIsFoundFromAnyOfItsBytes)
{
    EXPECT_EQ(word_around("a w\u00f6rd.", 4), (Span{2, 7}));
    EXPECT_EQ(word_around("a w\u00f6rd.", 7), (Span{7, 8}));
    EXPECT_EQ(word_around("", 0), (Span{0, 0}));
}

TEST(TextMoves, APlaceThatTheTextHasNotBecomesTheNearest)
{
    const Source source({"abc"});

    EXPECT_EQ(within(source, {0, 9}), (Place{0, 3}));
    EXPECT_EQ(within(source, {7, 1}), (Place{0, 3}));
    EXPECT_EQ(within(Source({}), {1, 1}), (Place{0, 0}));
}

} // namespace
