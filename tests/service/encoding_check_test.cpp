// The C library's converter must find every class of malformed text, at the right offset.
#include "service/encoding_check.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

namespace
{

using namespace std::string_literals;

struct Case {
    const char* encoding;
    const char* what;
    std::string bytes;
    bool valid;
    std::uint64_t valid_bytes;
};

std::ostream& operator<<(std::ostream& stream, const Case& one)
{
    return stream << one.encoding << ", " << one.what;
}

const std::vector<Case> cases = {
    {"utf-8", "nothing", ""s, true, 0},
    {"utf-8", "ASCII", "abc\r\n\0\x7f"s, true, 7},
    {"utf-8", "a mark", "\xef\xbb\xbfx"s, true, 4},
    {"utf-8", "the last of each length", "\xdf\xbf\xef\xbf\xbf\xf4\x8f\xbf\xbf"s, true, 9},
    {"utf-8", "noncharacters", "\xef\xb7\x90\xef\xbf\xbe"s, true, 6},
    {"utf-8", "a lone continuation byte", "ab\x80"s, false, 2},
    {"utf-8", "an overlong slash", "a\xc0\xaf"s, false, 1},
    {"utf-8", "an overlong NUL", "a\xc0\x80"s, false, 1},
    {"utf-8", "an overlong form of three", "a\xe0\x80\xaf"s, false, 1},
    {"utf-8", "an overlong form of four", "a\xf0\x80\x80\xaf"s, false, 1},
    {"utf-8", "a high surrogate", "a\xed\xa0\x80"s, false, 1},
    {"utf-8", "a low surrogate", "a\xed\xbf\xbf"s, false, 1},
    {"utf-8", "above 10FFFF", "a\xf4\x90\x80\x80"s, false, 1},
    {"utf-8", "five bytes", "a\xf8\x88\x80\x80\x80"s, false, 1},
    {"utf-8", "FE", "\xfe"s, false, 0},
    {"utf-8", "FF", "abc\xff"s, false, 3},
    {"utf-8", "a lead without its tail", "a\xe2\x28\xa1"s, false, 1},
    {"utf-8", "a cut form of two", "a\xc3"s, false, 1},
    {"utf-8", "a cut form of three", "a\xe2\x82"s, false, 1},
    {"utf-8", "a cut form of four", "a\xf0\x9f\x99"s, false, 1},
    {"utf-16le", "text with a mark", "\xff\xfe\x61\x00"s, true, 4},
    {"utf-16le", "a pair", "\x3d\xd8\x42\xde"s, true, 4},
    {"utf-16le", "a lone high surrogate", "\x61\x00\x3d\xd8\x61\x00"s, false, 2},
    {"utf-16le", "two high surrogates", "\x3d\xd8\x3d\xd8\x42\xde"s, false, 0},
    {"utf-16le", "a lone low surrogate", "\x61\x00\x42\xde\x61\x00"s, false, 2},
    {"utf-16le", "a high surrogate at the end", "\x61\x00\x3d\xd8"s, false, 2},
    {"utf-16le", "half a unit", "\x61\x00\x62"s, false, 2},
    {"utf-16be", "text with a mark", "\xfe\xff\x00\x61"s, true, 4},
    {"utf-16be", "a pair", "\xd8\x3d\xde\x42"s, true, 4},
    {"utf-16be", "a lone high surrogate", "\x00\x61\xd8\x3d\x00\x61"s, false, 2},
    {"utf-16be", "a lone low surrogate", "\x00\x61\xde\x42\x00\x61"s, false, 2},
    {"utf-16be", "half a unit", "\x00\x61\x00"s, false, 2},
    {"utf-32le", "text with a mark", "\xff\xfe\0\0\x61\0\0\0"s, true, 8},
    {"utf-32le", "the last character", "\xff\xff\x10\0"s, true, 4},
    {"utf-32le", "above 10FFFF", "\x61\0\0\0\0\0\x11\0"s, false, 4},
    {"utf-32le", "a high surrogate", "\x61\0\0\0\0\xd8\0\0"s, false, 4},
    {"utf-32le", "a low surrogate", "\x61\0\0\0\xff\xdf\0\0"s, false, 4},
    {"utf-32le", "the other byte order", "\0\0\0\x61"s, false, 0},
    {"utf-32le", "three bytes of four", "\x61\0\0\0\x61\0\0"s, false, 4},
    {"utf-32be", "text with a mark", "\0\0\xfe\xff\0\0\0\x61"s, true, 8},
    {"utf-32be", "above 10FFFF", "\0\0\0\x61\0\x11\0\0"s, false, 4},
    {"utf-32be", "a surrogate", "\0\0\0\x61\0\0\xd8\0"s, false, 4},
    {"utf-32be", "one byte of four", "\0\0\0\x61\0"s, false, 4},
};

class MalformedText : public testing::TestWithParam<Case>
{};

TEST_P(MalformedText, IsJudgedInOneSlice)
{
    EncodingCheck check(GetParam().encoding);

    const bool valid = check.feed(GetParam().bytes) && check.at_end();

    EXPECT_EQ(valid, GetParam().valid);
    EXPECT_EQ(check.valid_bytes(), GetParam().valid_bytes);
}

TEST_P(MalformedText, IsJudgedTheSameByteByByte)
{
    EncodingCheck check(GetParam().encoding);

    bool valid = true;
    for (const char byte : GetParam().bytes)
        valid = valid && check.feed({&byte, 1});
    valid = valid && check.at_end();

    EXPECT_EQ(valid, GetParam().valid);
    EXPECT_EQ(check.valid_bytes(), GetParam().valid_bytes);
}

INSTANTIATE_TEST_SUITE_P(AllClasses, MalformedText, testing::ValuesIn(cases));

TEST(EncodingCheck, TextLongerThanTheConvertersOutputIsCheckedToItsEnd)
{
    EncodingCheck check("utf-8");

    EXPECT_FALSE(check.feed(std::string(100'000, 'x') + "\xff"));

    EXPECT_EQ(check.valid_bytes(), 100'000U);
}

} // namespace
