#include "viewer/core/hunks.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{

using Numbers = std::vector<std::uint32_t>;

constexpr std::uint32_t largest = std::numeric_limits<std::uint32_t>::max();

TEST(FindHunks, TellsNumbersApartThatDifferInOneBit)
{
    const std::vector<Hunk> second_number{{{1, 2}, {1, 2}}};
    for (const std::uint32_t number : {std::uint32_t{0}, largest})
        for (int bit = 0; bit < std::numeric_limits<std::uint32_t>::digits; ++bit) {
            const Numbers first{3, number, 4};
            const Numbers second{3, number ^ std::uint32_t{1} << bit, 4};
            EXPECT_EQ(find_hunks(first, second), second_number) << number << ", bit " << bit;
        }
}

TEST(FindHunks, FindsEqualNumbersOfEverySize)
{
    Numbers first{1};
    Numbers second{2};
    for (std::uint32_t number = largest; number > 0; number /= 2) {
        first.push_back(number);
        second.push_back(number);
    }

    EXPECT_EQ(find_hunks(first, second), (std::vector<Hunk>{{{0, 1}, {0, 1}}}));
    EXPECT_TRUE(find_hunks(first, first).empty());
}

} // namespace
