// Our decoders judge as the C library's converter does, over all classes of malformed text.
#include "cmdline/encodings.h"
#include "tests/viewer/core/c_library_check.h"
#include "viewer/core/text.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{

using namespace std::string_literals;

struct Malformed {
    int encoding;
    const char* what;
    std::string bytes;
    TextFault fault;
    std::uint64_t offset;
};

std::ostream& operator<<(std::ostream& stream, const Malformed& one)
{
    return stream << encoding_types[one.encoding] << ", " << one.what;
}

const std::vector<Malformed> malformed = {
    {0, "a lone continuation byte", "ab\x80"s, TextFault::not_a_character, 2},
    {0, "an overlong slash", "a\xc0\xaf"s, TextFault::overlong, 1},
    {0, "an overlong NUL", "a\xc0\x80"s, TextFault::overlong, 1},
    {0, "an overlong form of three", "a\xe0\x80\xaf"s, TextFault::overlong, 1},
    {0, "an overlong form of four", "a\xf0\x80\x80\xaf"s, TextFault::overlong, 1},
    {0, "a high surrogate", "a\xed\xa0\x80"s, TextFault::surrogate, 1},
    {0, "a low surrogate", "a\xed\xbf\xbf"s, TextFault::surrogate, 1},
    {0, "above 10FFFF", "a\xf4\x90\x80\x80"s, TextFault::too_large, 1},
    {0, "five bytes", "a\xf8\x88\x80\x80\x80"s, TextFault::not_a_character, 1},
    {0, "FE", "\xfe"s, TextFault::not_a_character, 0},
    {0, "FF behind more than eight bytes", "123456789\xff"s, TextFault::not_a_character, 9},
    {0, "a lead without its tail", "a\xe2\x28\xa1"s, TextFault::truncated, 1},
    {0, "a cut form of two", "a\xc3"s, TextFault::truncated, 1},
    {0, "a cut form of three", "a\xe2\x82"s, TextFault::truncated, 1},
    {0, "a cut form of four", "a\xf0\x9f\x99"s, TextFault::truncated, 1},
    {0, "a fault behind the mark", "\xef\xbb\xbf\xff"s, TextFault::not_a_character, 3},
    {1, "a lone high surrogate", "a\0\x3d\xd8x\0"s, TextFault::unpaired_surrogate, 2},
    {1, "two high surrogates", "\x3d\xd8\x3d\xd8\x42\xde"s, TextFault::unpaired_surrogate, 0},
    {1, "a lone low surrogate", "a\0\x42\xde"s, TextFault::unpaired_surrogate, 2},
    {1, "a high surrogate at the end", "a\0\x3d\xd8"s, TextFault::truncated, 2},
    {1, "a low surrogate cut in half", "a\0\x3d\xd8\x42"s, TextFault::truncated, 2},
    {1, "half a unit", "a\0b"s, TextFault::truncated, 2},
    {2, "a lone high surrogate", "\xd8\x3d\0a"s, TextFault::unpaired_surrogate, 0},
    {2, "a lone low surrogate", "\0a\xde\x42"s, TextFault::unpaired_surrogate, 2},
    {2, "half a unit", "\0a\0"s, TextFault::truncated, 2},
    {3, "above 10FFFF", "a\0\0\0\0\0\x11\0"s, TextFault::too_large, 4},
    {3, "a surrogate", "a\0\0\0\0\xd8\0\0"s, TextFault::surrogate, 4},
    {3, "the other byte order", "\0\0\0a"s, TextFault::too_large, 0},
    {3, "three bytes of four", "a\0\0\0a\0\0"s, TextFault::truncated, 4},
    {4, "above 10FFFF", "\0\0\0a\0\x11\0\0"s, TextFault::too_large, 4},
    {4, "a surrogate", "\0\0\0a\0\0\xdf\xff"s, TextFault::surrogate, 4},
    {4, "one byte of four", "\0\0\0a\0"s, TextFault::truncated, 4},
};

class MalformedText : public testing::TestWithParam<Malformed>
{};

TEST_P(MalformedText, IsToldWithItsOffset)
{
    const TextOrProblem outcome = decode_text(GetParam().bytes, GetParam().encoding);

    const auto* problem = std::get_if<TextProblem>(&outcome);
    ASSERT_NE(problem, nullptr);
    EXPECT_EQ(problem->fault, GetParam().fault) << problem->what();
    EXPECT_EQ(problem->offset, GetParam().offset);
    EXPECT_TRUE(problem->is_malformed());
}

INSTANTIATE_TEST_SUITE_P(AllClasses, MalformedText, testing::ValuesIn(malformed));

/** The offset of the first bad sequence, or the size of a valid text. */
std::uint64_t valid_bytes_here(const std::string& bytes, int encoding)
{
    const TextOrProblem outcome = decode_text(bytes, encoding);
    const auto* problem = std::get_if<TextProblem>(&outcome);
    return problem != nullptr ? problem->offset : bytes.size();
}

std::uint64_t valid_bytes_of_the_library(const std::string& bytes, int encoding)
{
    CLibraryCheck check(encoding_types[encoding]);
    check.feed(bytes);
    return check.valid_bytes();
}

/** Every sequence of four bytes, for UTF-8 of those that stand on either side of a limit, with a
    character before it and one behind. */
void expect_same_judgement(int encoding, const std::vector<int>& bytes, const std::string& before,
                           const std::string& behind)
{
    std::string text = before + "1234" + behind;
    for (const int first : bytes)
        for (const int second : bytes)
            for (const int third : bytes)
                for (const int fourth : bytes) {
                    const std::string four = {static_cast<char>(first), static_cast<char>(second),
                                              static_cast<char>(third), static_cast<char>(fourth)};
                    text.replace(before.size(), four.size(), four);
                    ASSERT_EQ(valid_bytes_here(text, encoding),
                              valid_bytes_of_the_library(text, encoding))
                        << first << ' ' << second << ' ' << third << ' ' << fourth;
                }
}

TEST(Decoding, JudgesUtf8AsTheLibraryDoes)
{
    expect_same_judgement(0, {0x00, 0x7f, 0x80, 0x8f, 0x90, 0x9f, 0xa0, 0xbf, 0xc0, 0xc1,
                              0xc2, 0xdf, 0xe0, 0xe1, 0xec, 0xed, 0xee, 0xef, 0xf0, 0xf1,
                              0xf3, 0xf4, 0xf5, 0xf7, 0xf8, 0xfb, 0xfc, 0xfd, 0xfe, 0xff},
                          "a", "b");
}

const std::vector<int> limits_of_units = {0x00, 0x01, 0x10, 0x11, 0x7f, 0x80, 0xd7,
                                          0xd8, 0xdb, 0xdc, 0xdf, 0xe0, 0xfe, 0xff};

TEST(Decoding, JudgesUtf16AsTheLibraryDoes)
{
    expect_same_judgement(1, limits_of_units, "a\0"s, "b\0"s);
    expect_same_judgement(2, limits_of_units, "\0a"s, "\0b"s);
    expect_same_judgement(1, limits_of_units, "a\0"s, "b"s);
    expect_same_judgement(2, limits_of_units, "\0a"s, "\0"s);
}

TEST(Decoding, JudgesUtf32AsTheLibraryDoes)
{
    expect_same_judgement(3, limits_of_units, "a\0\0\0"s, "b\0\0\0"s);
    expect_same_judgement(4, limits_of_units, "\0\0\0a"s, "\0\0\0b"s);
    expect_same_judgement(3, limits_of_units, "a\0\0\0"s, "b\0\0"s);
    expect_same_judgement(4, limits_of_units, "\0\0\0a"s, "\0"s);
}

TEST(Decoding, JudgesEveryLeadAndSecondByteOfUtf8AsTheLibraryDoes)
{
    for (int lead = 0x80; lead <= 0xff; ++lead)
        for (int second = 0; second <= 0xff; ++second) {
            const std::string text = {static_cast<char>(lead), static_cast<char>(second), '\x80',
                                      '\x80'};
            ASSERT_EQ(valid_bytes_here(text, 0), valid_bytes_of_the_library(text, 0))
                << lead << ' ' << second;
        }
}

/** All that Unicode has, in UTF-32LE. */
std::string all_characters()
{
    std::string bytes;
    for (std::uint32_t character = 1; character <= 0x10ffff; ++character)
        if (character < 0xd800 || character > 0xdfff)
            for (unsigned shift = 0; shift < 32; shift += 8)
                bytes += static_cast<char>(character >> shift & 0xffU);
    return bytes;
}

std::string converted_by_the_library(std::string bytes, const char* to, const char* from)
{
    std::string converted(bytes.size() * 2, '\0');
    char* input = bytes.data();
    char* output = converted.data();
    std::size_t input_left = bytes.size();
    std::size_t room = converted.size();
    const iconv_t converter = ::iconv_open(to, from);
    EXPECT_EQ(::iconv(converter, &input, &input_left, &output, &room), 0U);
    ::iconv_close(converter);
    converted.resize(converted.size() - room);
    return converted;
}

TEST(Decoding, EveryCharacterOfEveryEncodingIsTheLibrarys)
{
    const std::string utf32 = all_characters();
    const std::string utf8 = converted_by_the_library(utf32, "utf-8", "utf-32le");
    for (int encoding = 0; encoding < encoding_rows - 1; ++encoding) {
        const std::string bytes =
            converted_by_the_library(utf32, encoding_types[encoding], "utf-32le");

        const TextOrProblem outcome = decode_text(bytes, encoding);

        ASSERT_TRUE(std::holds_alternative<Text>(outcome)) << encoding_types[encoding];
        EXPECT_TRUE(std::get<Text>(outcome).content() == utf8) << encoding_types[encoding];
        EXPECT_TRUE(encode_text(utf8, encoding, false) == bytes) << encoding_types[encoding];
    }
}

} // namespace
