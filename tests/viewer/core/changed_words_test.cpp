#include "tests/viewer/core/texts.h"
#include "viewer/core/changed_words.h"

#include <gtest/gtest.h>

namespace
{

/** The line with its changed words in brackets. */
std::string marked(std::string_view line, const std::vector<Span>& spans)
{
    std::string text;
    std::size_t at = 0;
    for (const Span& span : spans) {
        text += line.substr(at, span.begin - at);
        text += '[';
        text += line.substr(span.begin, span.end - span.begin);
        text += ']';
        at = span.end;
    }
    text += line.substr(at);
    return text;
}

struct Lines {
    const char* first;
    const char* second;
    CompareOptions options{};
};

std::string both_marked(const Lines& lines)
{
    const WordChanges changes = changed_words(lines.first, lines.second, lines.options);
    return marked(lines.first, changes.first) + " | " + marked(lines.second, changes.second);
}

TEST(ChangedWords, AreWholeWords)
{
    EXPECT_EQ(both_marked({"int value1 = 2;", "int value2 = 2;"}),
              "int [value1] = 2; | int [value2] = 2;");
}

TEST(ChangedWords, OfEqualLinesAreNone)
{
    EXPECT_EQ(both_marked({"same", "same"}), "same | same");
}

TEST(ChangedWords, MayStandOnOneSideAlone)
{
    EXPECT_EQ(both_marked({"a c", "a b c"}), "a c | a [b ]c");
}

TEST(ChangedWords, AtTheEndsAreFound)
{
    EXPECT_EQ(both_marked({"foo", "foobar"}), "[foo] | [foobar]");
    EXPECT_EQ(both_marked({"bar", "foobar"}), "[bar] | [foobar]");
    EXPECT_EQ(both_marked({"", "x"}), " | [x]");
}

TEST(ChangedWords, ThatRepeatAtBothEndsDoNotOverlap)
{
    EXPECT_EQ(both_marked({"a a", "a a a"}), "a a | a a[ a]");
}

TEST(ChangedWords, APunctuationCharacterIsAWord)
{
    EXPECT_EQ(both_marked({"f(a);", "f[a];"}), "f[(]a[)]; | f[[]a[]];");
}

TEST(ChangedWords, ALetterWithAnAccentIsPartOfItsWord)
{
    EXPECT_EQ(both_marked({"z\xc3\xa4hlt", "z\xc3\xa4hle"}), "[z\xc3\xa4hlt] | [z\xc3\xa4hle]");
}

TEST(ChangedWords, AnIdeographIsAWord)
{
    EXPECT_EQ(both_marked({"\xe6\x96\x87\xe5\xad\x97", "\xe6\x96\x87\xe6\x9c\xac"}),
              "\xe6\x96\x87[\xe5\xad\x97] | \xe6\x96\x87[\xe6\x9c\xac]");
}

TEST(ChangedWords, NeverCutACharacter)
{
    // both begin with the same byte, and both end with the same one
    EXPECT_EQ(both_marked({"\xf0\x9f\x99\x82", "\xf0\x9f\x98\x82"}),
              "[\xf0\x9f\x99\x82] | [\xf0\x9f\x98\x82]");
}

TEST(ChangedWords, WhiteSpaceThatIsIgnoredIsNoChange)
{
    EXPECT_EQ(both_marked({"a  b x", "a b y", {.white_space = WhiteSpace::amount_ignored}}),
              "a  b [x] | a b [y]");
    EXPECT_EQ(both_marked({"a + x", "a+y", {.white_space = WhiteSpace::ignored}}),
              "a + [x] | a+[y]");
}

TEST(ChangedWords, CaseThatIsIgnoredIsNoChange)
{
    EXPECT_EQ(both_marked({"Word x", "word y", {.ignore_case = true}}), "Word [x] | word [y]");
}

TEST(ChangedWords, BeyondALimitAreOneSpan)
{
    std::string first = "same ";
    std::string second = "same ";
    for (int count = 0; count < 30'000; ++count) {
        first += "a ";
        second += "b ";
    }
    first += "end";
    second += "end";

    const WordChanges changes = changed_words(first, second, {});

    EXPECT_EQ(changes.first, (std::vector<Span>{{5, first.size() - 4}}));
    EXPECT_EQ(changes.second, (std::vector<Span>{{5, second.size() - 4}}));
}

TEST(ChangedWords, OfAFewPlacesInAVeryLongLineAreFound)
{
    std::string first(2'000'000, 'x');
    first += " one tail";
    std::string second(2'000'000, 'x');
    second += " two tail";

    EXPECT_EQ(changed_words(first, second, {}).first, (std::vector<Span>{{2'000'001, 2'000'004}}));
}

TEST(ChangedWordsOfRow, TheFirstIsBesideAllOthers)
{
    const Texts texts = texts_of({"a b c\n", "x b c\n", "a b y\n"});
    const Comparison comparison = *compare(texts, {});

    const auto spans = changed_words_of_row(texts, comparison, 0, {});

    EXPECT_EQ(spans[0], (std::vector<Span>{{0, 1}, {4, 5}}));
    EXPECT_EQ(spans[1], (std::vector<Span>{{0, 1}}));
    EXPECT_EQ(spans[2], (std::vector<Span>{{4, 5}}));
}

TEST(ChangedWordsOfRow, OfTheFirstThatOverlapAreOne)
{
    const Texts texts = texts_of({"a b c d\n", "x y z d\n", "a b d\n", "a b c d\n"});
    const Comparison comparison = *compare(texts, {});

    const auto spans = changed_words_of_row(texts, comparison, 0, {});

    EXPECT_EQ(marked("a b c d", spans[0]), "[a] [b] [c ]d");
    EXPECT_TRUE(spans[3].empty());
}

TEST(ChangedWordsOfRow, ALineBesideAGapHasNone)
{
    const Texts texts = texts_of({"a\n", "a\nb\n"});
    const Comparison comparison = *compare(texts, {});

    EXPECT_EQ(changed_words_of_row(texts, comparison, 1, {}), (std::vector<std::vector<Span>>(2)));
}

} // namespace
