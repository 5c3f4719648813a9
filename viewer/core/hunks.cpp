#include "viewer/core/hunks.h"

#include <algorithm>
#include <bit>
#include <git2.h>
#include <string>

namespace
{

class Libgit2
{
  public:
    Libgit2() { ::git_libgit2_init(); }
    ~Libgit2() { ::git_libgit2_shutdown(); }
    Libgit2(const Libgit2&) = delete;
    Libgit2& operator=(const Libgit2&) = delete;
    Libgit2(Libgit2&&) = delete;
    Libgit2& operator=(Libgit2&&) = delete;
};

constexpr unsigned digit_bits = 5; // see as_text

/** How many digits all the numbers take. */
std::size_t digits_for(std::span<const std::uint32_t> numbers)
{
    const std::uint32_t most = numbers.empty() ? 0 : std::ranges::max(numbers);
    return std::max((static_cast<std::size_t>(std::bit_width(most)) + digit_bits - 1) / digit_bits,
                    std::size_t{1});
}

/** A line of text for each number. libgit2 reads text only, and goes through short lines faster
    than through those of the files. It looks lines up by a sum in which each character counts 33
    times the next one: with digits below 32, the highest first, that sum is another one for every
    number, and those of neighbours are neighbours, as the processor's cache likes it. */
std::string as_text(std::span<const std::uint32_t> numbers, std::size_t digits)
{
    constexpr std::uint32_t mask = (1U << digit_bits) - 1;
    std::string text(numbers.size() * (digits + 1), '\n');
    char* line = text.data();
    for (std::uint32_t number : numbers) {
        for (std::size_t digit = digits; digit-- > 0; number >>= digit_bits)
            line[digit] = static_cast<char>('@' + (number & mask));
        line += digits + 1;
    }
    return text;
}

/** Where there are no lines, libgit2 gives the line before. */
LineRange range_of(int start, int lines)
{
    const auto begin = static_cast<std::size_t>(lines > 0 ? start - 1 : start);
    return {begin, begin + static_cast<std::size_t>(lines)};
}

int take_hunk(const git_diff_delta* /*delta*/, const git_diff_hunk* hunk, void* hunks)
{
    static_cast<std::vector<Hunk>*>(hunks)->push_back(
        {range_of(hunk->old_start, hunk->old_lines), range_of(hunk->new_start, hunk->new_lines)});
    return 0;
}

} // namespace

void prepare_find_hunks()
{
    static const Libgit2 library;
}

std::vector<Hunk> find_hunks(std::span<const std::uint32_t> first,
                             std::span<const std::uint32_t> second)
{
    prepare_find_hunks();
    if (std::ranges::equal(first, second))
        return {};
    git_diff_options options;
    ::git_diff_options_init(&options, GIT_DIFF_OPTIONS_VERSION);
    options.flags = GIT_DIFF_FORCE_TEXT;
    options.context_lines = 0;
    const std::size_t digits = std::max(digits_for(first), digits_for(second));
    const std::string first_text = as_text(first, digits);
    const std::string second_text = as_text(second, digits);
    std::vector<Hunk> hunks;
    const int failure = ::git_diff_buffers(first_text.data(), first_text.size(), nullptr,
                                           second_text.data(), second_text.size(), nullptr,
                                           &options, nullptr, nullptr, take_hunk, nullptr, &hunks);
    if (failure != 0) // too many lines for it: right still, if not helpful
        return {{{0, first.size()}, {0, second.size()}}};
    return hunks;
}
