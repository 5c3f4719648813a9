#include "cmdline/encodings.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <iterator>
#include <type_traits>

namespace
{

template<std::size_t width>
bool padded_with_nul(const char (&row)[width])
{
    return std::all_of(row + std::strlen(row), std::end(row), [](char c) { return c == '\0'; });
}

TEST(EncodingTables, HaveTheWidthsThatReadersCountOn)
{
    static_assert(std::is_same_v<decltype(encoding_types), const char[6][10]>);
    static_assert(std::is_same_v<decltype(type_manager_names), const char[6][25]>);
    EXPECT_EQ(sizeof encoding_types, 60U);
    EXPECT_EQ(sizeof type_manager_names, 150U);
}

TEST(EncodingTables, PairEveryEncodingWithItsTypeManager)
{
    const char* const expected[][2] = {
        {"utf-8", "utf8_file_delta"},       {"utf-16le", "utf16le_file_delta"},
        {"utf-16be", "utf16be_file_delta"}, {"utf-32le", "utf32le_file_delta"},
        {"utf-32be", "utf32be_file_delta"}, {" ", " "},
    };
    ASSERT_EQ(std::size(expected), static_cast<std::size_t>(encoding_rows));
    for (int row = 0; row < encoding_rows; ++row) {
        EXPECT_STREQ(encoding_types[row], expected[row][0]);
        EXPECT_STREQ(type_manager_names[row], expected[row][1]);
    }
}

TEST(EncodingTables, ArePaddedWithNulBytes)
{
    for (int row = 0; row < encoding_rows; ++row) {
        EXPECT_TRUE(padded_with_nul(encoding_types[row])) << row;
        EXPECT_TRUE(padded_with_nul(type_manager_names[row])) << row;
    }
}

TEST(EncodingTables, EndInTheRowOfOneBlank)
{
    EXPECT_STREQ(end_marker, " ");
    EXPECT_STREQ(encoding_types[encoding_rows - 1], end_marker);
}

} // namespace
