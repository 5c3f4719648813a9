#include "support/joined.h"
#include "tests/harness/scratch.h"
#include "tests/viewer/core/texts.h"
#include "viewer/core/text.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{

using namespace std::string_literals;

Text decoded(std::string bytes, int encoding)
{
    return std::get<Text>(decode_text(std::move(bytes), encoding));
}

std::vector<std::string> lines_of(const Text& text)
{
    std::vector<std::string> lines;
    for (std::size_t line = 0; line < text.line_count(); ++line)
        lines.emplace_back(text.whole_line(line));
    return lines;
}

using Lines = std::vector<std::string>;

TEST(Text, NothingHasNoLine)
{
    EXPECT_EQ(Text().line_count(), 0U);
}

TEST(Text, AFinalEndOfLineBeginsNoFurtherLine)
{
    EXPECT_EQ(lines_of(*text_of("a\nb\n")), (Lines{"a\n", "b\n"}));
}

TEST(Text, TheLastLineMayLackItsEnd)
{
    EXPECT_EQ(lines_of(*text_of("a\nb")), (Lines{"a\n", "b"}));
}

TEST(Text, EveryLineHasItsOwnEnd)
{
    EXPECT_EQ(lines_of(*text_of("a\r\nb\rc\n\r\r\n\n\rd")),
              (Lines{"a\r\n", "b\r", "c\n", "\r", "\r\n", "\n", "\r", "d"}));
}

TEST(Text, ReturnsAloneEndLines)
{
    EXPECT_EQ(lines_of(*text_of("a\rb\r")), (Lines{"a\r", "b\r"}));
}

TEST(Text, AReturnAtTheVeryEndIsAnEnd)
{
    EXPECT_EQ(lines_of(*text_of("a\nb\r")), (Lines{"a\n", "b\r"}));
}

TEST(Text, LineEndsAreCounted)
{
    const LineEndCounts counts = text_of("a\nb\nc\r\nd\re")->line_ends();

    EXPECT_EQ(counts.lf, 2U);
    EXPECT_EQ(counts.crlf, 1U);
    EXPECT_EQ(counts.cr, 1U);
    EXPECT_EQ(counts.none, 1U);
}

TEST(Text, ALineIsGivenWithoutItsEnd)
{
    EXPECT_EQ(text_of("ab\r\n")->line(0), "ab");
}

TEST(Text, TheLineOfAByteIsFound)
{
    const auto text = text_of("ab\ncd\n");

    EXPECT_EQ(text->line_at(0), 0U);
    EXPECT_EQ(text->line_at(2), 0U);
    EXPECT_EQ(text->line_at(3), 1U);
    EXPECT_EQ(text->line_at(6), 1U);
}

TEST(DecodeText, NulAndControlCharactersAndNoncharactersAreText)
{
    EXPECT_EQ(decoded("a\0b\x01\x7f\xef\xbf\xbe\xef\xb7\x90"s, 0).content(),
              "a\0b\x01\x7f\xef\xbf\xbe\xef\xb7\x90"s);
}

TEST(DecodeText, OnlyTheFirstMarkIsAMark)
{
    const Text text = decoded("\xef\xbb\xbf\xef\xbb\xbfx", 0);

    EXPECT_TRUE(text.has_mark());
    EXPECT_EQ(text.content(), "\xef\xbb\xbfx");
}

TEST(DecodeText, AMarkOfTheOtherByteOrderIsACharacter)
{
    const Text text = decoded("\xfe\xff", 1);

    EXPECT_FALSE(text.has_mark());
    EXPECT_EQ(text.content(), "\xef\xbf\xbe");
}

TEST(DecodeText, TheLineOfAFaultCountsAllKindsOfEnds)
{
    const TextOrProblem outcome = decode_text("a\nb\r\nc\rd\xff", 0);

    EXPECT_EQ(std::get<TextProblem>(outcome).line, 4U);
}

TEST(DecodeText, AFaultRightBehindAnEndIsInTheNextLine)
{
    EXPECT_EQ(std::get<TextProblem>(decode_text("a\n\xff", 0)).line, 2U);
    EXPECT_EQ(std::get<TextProblem>(decode_text("\xff", 0)).line, 1U);
}

/** Encoding, mark, end of all lines but the last, end of the last. */
using Form = std::tuple<int, bool, const char*, const char*>;

class EveryForm : public testing::TestWithParam<Form>
{};

TEST_P(EveryForm, ComesBackByteForByte)
{
    const auto& [encoding, mark, end, last_end] = GetParam();
    const std::string content =
        joined({"z\xc3\xa4hlt", end, "\xe6\x96\x87", end, end, "\xf0\x9f\x99\x82 last", last_end});
    const std::string bytes = encode_text(content, encoding, mark);

    const Text text = decoded(bytes, encoding);

    EXPECT_EQ(text.content(), content);
    EXPECT_EQ(text.has_mark(), mark);
    EXPECT_EQ(encode_text(text.content(), text.encoding(), text.has_mark()), bytes);
}

INSTANTIATE_TEST_SUITE_P(Of, EveryForm,
                         testing::Combine(testing::Range(0, 5), testing::Bool(),
                                          testing::Values("\n", "\r\n", "\r"),
                                          testing::Values("", "\n", "\r\n", "\r")));

TEST(DecodeBeginning, HasTheWholeLines)
{
    EXPECT_EQ(lines_of(decode_beginning("\xef\xbb\xbf"
                                        "a\r\nb\nc",
                                        0)
                           .value()),
              (Lines{"a\r\n", "b\n"}));
    EXPECT_TRUE(decode_beginning("\xef\xbb\xbf"
                                 "a\n",
                                 0)
                    .value()
                    .has_mark());
}

TEST(DecodeBeginning, OfASingleLineHasWhatIsThere)
{
    EXPECT_EQ(lines_of(decode_beginning("abc", 0).value()), (Lines{"abc"}));
}

TEST(DecodeBeginning, MayCutACharacter)
{
    EXPECT_EQ(lines_of(decode_beginning("a\nb\xf0\x9f\x98", 0).value()), (Lines{"a\n"}));
    EXPECT_EQ(lines_of(decode_beginning("a\0\n\0\x3d\xd8"s, 1).value()), (Lines{"a\n"}));
    EXPECT_EQ(lines_of(decode_beginning("\0\0\0a\0\0\0\n\0\0"s, 4).value()), (Lines{"a\n"}));
}

TEST(DecodeBeginning, IsNothingWhereThereIsAFault)
{
    EXPECT_FALSE(decode_beginning("a\n\xc0\x80 and more\n", 0));
}

TEST(ReadBeginning, IsOfAFilesFirstBytes)
{
    const Scratch scratch;
    const std::string line = "seven b\n";
    std::string content;
    for (std::size_t count = 0; count < 10'000; ++count)
        content += line;

    const auto beginning = read_beginning(scratch.write_file("a", content), 0);

    EXPECT_EQ(beginning.value().line_count(), 65536 / line.size());
}

TEST(ReadBeginning, IsNothingWhereThereIsNoFile)
{
    EXPECT_FALSE(read_beginning("/no/such/file", 0));
    EXPECT_FALSE(read_beginning("/dev/zero", 0));
}

TextFault fault_of(const std::string& path)
{
    const TextOrProblem outcome = read_text(path, 0);
    return std::get<TextProblem>(outcome).fault;
}

TEST(ReadText, ReadsAWholeFile)
{
    const Scratch scratch;
    const std::string content(300'000, 'x');

    EXPECT_EQ(std::get<Text>(read_text(scratch.write_file("a", content), 0)).content(), content);
}

TEST(ReadText, AnEmptyFileIsAText)
{
    const Scratch scratch;

    EXPECT_EQ(std::get<Text>(read_text(scratch.write_file("a", ""), 1)).line_count(), 0U);
}

TEST(ReadText, TheNullDeviceIsAnEmptyText)
{
    EXPECT_EQ(std::get<Text>(read_text("/dev/null", 3)).encoding(), 3);
}

TEST(ReadText, AFileWithoutASizeIsReadToItsEnd)
{
    EXPECT_GT(std::get<Text>(read_text("/proc/self/status", 0)).line_count(), 10U);
}

TEST(ReadText, ADirectoryIsNoText)
{
    EXPECT_EQ(fault_of("/"), TextFault::is_directory);
}

TEST(ReadText, AnotherDeviceIsNoText)
{
    EXPECT_EQ(fault_of("/dev/zero"), TextFault::not_a_file);
}

TEST(ReadText, AFifoIsNoTextAndIsNotWaitedFor)
{
    const Scratch scratch;
    ASSERT_EQ(::mkfifo((scratch / "fifo").c_str(), 0600), 0);

    EXPECT_EQ(fault_of(scratch / "fifo"), TextFault::not_a_file);
}

TEST(ReadText, ASocketIsNoText)
{
    const Scratch scratch;
    ASSERT_EQ(::mknod((scratch / "socket").c_str(), S_IFSOCK | 0600, 0), 0);

    EXPECT_EQ(fault_of(scratch / "socket"), TextFault::not_a_file);
}

TEST(ReadText, AFileOfMoreThanAGigabyteIsRefused)
{
    const Scratch scratch;
    const std::string path = scratch.write_file("huge", "");
    ASSERT_EQ(::truncate(path.c_str(), (off_t{1} << 30) + 1), 0);

    EXPECT_EQ(std::get<TextProblem>(read_text(path, 0)).what(), "File too large");
}

TEST(ReadText, AMissingFileIsToldInTheSystemsWords)
{
    const TextOrProblem outcome = read_text("/no/such/file", 0);

    EXPECT_EQ(std::get<TextProblem>(outcome).fault, TextFault::unreadable);
    EXPECT_EQ(std::get<TextProblem>(outcome).what(), "No such file or directory");
    EXPECT_FALSE(std::get<TextProblem>(outcome).is_malformed());
}

} // namespace
