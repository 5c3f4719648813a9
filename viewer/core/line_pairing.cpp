#include "viewer/core/line_pairing.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <utility>

namespace
{

constexpr std::size_t most_steps = 400'000; // in one block
constexpr std::size_t most_lines = 2'000;   // of two sides of a block
constexpr std::size_t most_bytes = 1'000;   // looked at in one line
constexpr std::uint32_t full_likeness = 1'000;
constexpr std::uint32_t least_likeness = full_likeness / 2; // for lines that share a row

struct Word {
    std::size_t hash;
    std::size_t size;
};

/** The words of a line without white space, sorted so that those in common are quickly found. */
struct LineWords {
    std::vector<Word> words{};
    std::size_t size = 0; // of all words
};

bool is_white(char byte)
{
    return byte == ' ' || byte == '\t' || byte == '\v' || byte == '\f';
}

bool is_of_word(char byte)
{
    const auto value = static_cast<unsigned char>(byte);
    return value >= 0x80 || byte == '_' || (byte >= '0' && byte <= '9') ||
           (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

LineWords words_of(std::string_view line)
{
    LineWords found;
    line = line.substr(0, most_bytes);
    for (std::size_t at = 0; at < line.size();) {
        const std::size_t from = at++;
        if (is_white(line[from]))
            continue;
        while (is_of_word(line[from]) && at < line.size() && is_of_word(line[at]))
            ++at;
        const std::string_view word = line.substr(from, at - from);
        found.words.push_back({std::hash<std::string_view>()(word), word.size()});
        found.size += word.size();
    }
    std::ranges::sort(found.words, {}, &Word::hash);
    return found;
}

std::vector<LineWords> words_of(const Text& text, LineRange lines)
{
    std::vector<LineWords> found;
    found.reserve(lines.size());
    for (std::size_t line = lines.begin; line < lines.end; ++line)
        found.push_back(words_of(text.line(line)));
    return found;
}

/** The share of words that both have. */
std::uint32_t likeness(const LineWords& one, const LineWords& other)
{
    if (one.size + other.size == 0)
        return least_likeness; // both are blank: better than nothing, but no more
    std::size_t common = 0;
    auto here = one.words.begin();
    auto there = other.words.begin();
    while (here != one.words.end() && there != other.words.end()) {
        if (here->hash == there->hash) {
            common += here->size;
            ++here;
            ++there;
        } else {
            ++(here->hash < there->hash ? here : there);
        }
    }
    return static_cast<std::uint32_t>(common * 2 * full_likeness / (one.size + other.size));
}

/** The likenesses of all lines of two sides, and the most that lines from there on add up to. */
class Grid
{
  public:
    Grid(const std::vector<LineWords>& first, const std::vector<LineWords>& second)
        : width(second.size() + 1), alike(width * first.size()), sums(width * (first.size() + 1))
    {
        for (std::size_t row = first.size(); row-- > 0;)
            for (std::size_t column = second.size(); column-- > 0;) {
                const std::uint32_t both = likeness(first[row], second[column]);
                alike[at(row, column)] = both;
                sums[at(row, column)] =
                    std::max({sum(row + 1, column), sum(row, column + 1),
                              both < least_likeness ? 0 : both + sum(row + 1, column + 1)});
            }
    }

    std::uint32_t sum(std::size_t row, std::size_t column) const { return sums[at(row, column)]; }

    /** Whether the two lines are a pair where the most is reached. */
    bool pairs(std::size_t row, std::size_t column) const
    {
        const std::uint32_t both = alike[at(row, column)];
        return both >= least_likeness && sum(row, column) == both + sum(row + 1, column + 1);
    }

  private:
    std::size_t at(std::size_t row, std::size_t column) const { return row * width + column; }

    std::size_t width;
    std::vector<std::uint32_t> alike;
    std::vector<std::uint32_t> sums;
};

std::size_t count_words(const std::vector<LineWords>& lines)
{
    std::size_t count = lines.size();
    for (const LineWords& line : lines)
        count += line.words.size();
    return count;
}

/** Gives the lines their rows, each as high up as the pairs allow. */
class RowFilling
{
  public:
    RowFilling(const std::vector<LineRange>& of_all, const std::vector<LinePairs>& of_others)
        : lines(of_all), pairs(of_others), rows(of_all.size()), taken(of_all.size())
    {
    }

    LineRows fill()
    {
        for (std::size_t line = 0; line < lines[0].size(); ++line)
            place(line);
        for (std::size_t index = 1; index < lines.size(); ++index)
            fill_up_to(index, lines[index].size());
        return std::move(rows);
    }

  private:
    /** Places a line of the first, and those of the others that are paired with it. */
    void place(std::size_t line)
    {
        std::uint32_t row = next_row(0);
        std::vector<std::size_t> beside;
        for (std::size_t index = 1; index < lines.size(); ++index) {
            if (taken[index] == pairs[index].size() || pairs[index][taken[index]].first != line)
                continue;
            fill_up_to(index, pairs[index][taken[index]++].second);
            row = std::max(row, next_row(index));
            beside.push_back(index);
        }
        rows[0].push_back(row);
        for (const std::size_t index : beside)
            rows[index].push_back(row);
    }

    std::uint32_t next_row(std::size_t index) const
    {
        return rows[index].empty() ? 0 : rows[index].back() + 1;
    }

    void fill_up_to(std::size_t index, std::size_t line)
    {
        while (rows[index].size() < line)
            rows[index].push_back(next_row(index));
    }

    const std::vector<LineRange>& lines;
    const std::vector<LinePairs>& pairs;
    LineRows rows;
    std::vector<std::size_t> taken; // pairs of each contributor
};

bool follow_one_another(const LineRows& rows)
{
    return std::ranges::all_of(rows, [](const std::vector<std::uint32_t>& of_one) {
        return of_one.empty() || of_one.back() + 1 == of_one.size();
    });
}

} // namespace

LinePairs LinePairing::pairs_of(std::size_t contributor, LineRange of_first, LineRange of_other)
{
    LinePairs pairs;
    if (of_first.size() + of_other.size() > most_lines)
        return pairs;
    const auto first = words_of(*contributors[0], of_first);
    const auto second = words_of(*contributors[contributor], of_other);
    const std::size_t steps =
        first.size() * count_words(second) + second.size() * count_words(first);
    if (steps > std::min(most_steps, steps_left))
        return pairs;
    steps_left -= steps;
    const Grid grid(first, second);
    for (std::size_t row = 0, column = 0; row < first.size() && column < second.size();) {
        if (grid.pairs(row, column))
            pairs.push_back({row++, column++});
        else
            ++(grid.sum(row + 1, column) >= grid.sum(row, column + 1) ? row : column);
    }
    return pairs;
}

LineRows LinePairing::rows_of(const std::vector<LineRange>& lines)
{
    const bool is_plain = lines[0].empty() || std::ranges::all_of(lines, [](LineRange range) {
                              return range.size() <= 1;
                          });
    if (is_plain)
        return {};
    std::vector<LinePairs> pairs(lines.size());
    for (std::size_t index = 1; index < lines.size(); ++index)
        pairs[index] = pairs_of(index, lines[0], lines[index]);
    LineRows rows = RowFilling(lines, pairs).fill();
    return follow_one_another(rows) ? LineRows() : rows;
}
