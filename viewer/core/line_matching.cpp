#include "viewer/core/line_matching.h"

#include "viewer/core/characters.h"

#include <algorithm>
#include <bit>
#include <clocale>
#include <cwctype>
#include <deque>
#include <functional>

namespace
{

/** Gives each distinct line its number. An open hash table that never grows: the number of all
   lines is known, and no node is allocated for any. */
class LineTable
{
  public:
    explicit LineTable(std::size_t most_lines) : slots(std::bit_ceil(2 * most_lines + 1)) {}

    std::uint32_t number(std::string_view line)
    {
        const std::size_t hash = std::hash<std::string_view>()(line);
        const std::size_t mask = slots.size() - 1;
        std::size_t at = hash & mask;
        while (slots[at] != 0 && !is_known(slots[at], hash, line))
            at = (at + 1) & mask;
        if (slots[at] == 0) {
            known.push_back({hash, line});
            slots[at] = static_cast<std::uint32_t>(known.size());
        }
        return slots[at] - 1;
    }

  private:
    struct Known {
        std::size_t hash;
        std::string_view line;
    };

    bool is_known(std::uint32_t slot, std::size_t hash, std::string_view line) const
    {
        const Known& entry = known[slot - 1];
        return entry.hash == hash && entry.line == line;
    }

    std::vector<std::uint32_t> slots; // 0 for a free one, else a number and 1
    std::vector<Known> known;         // by number
};

bool is_white(char byte)
{
    return byte == ' ' || byte == '\t' || byte == '\v' || byte == '\f';
}

std::string without_white_space(std::string_view line)
{
    std::string rest;
    rest.reserve(line.size());
    std::ranges::copy_if(line, std::back_inserter(rest), [](char byte) { return !is_white(byte); });
    return rest;
}

/** Runs of white space become one space, and the one at the end goes. */
std::string with_single_spaces(std::string_view line)
{
    std::string rest;
    rest.reserve(line.size());
    bool pending = false;
    for (const char byte : line) {
        if (!is_white(byte)) {
            if (pending)
                rest += ' ';
            rest += byte;
        }
        pending = is_white(byte);
    }
    return rest;
}

/** Owns the texts that lines were reduced to. */
class LineKeys
{
  public:
    explicit LineKeys(const CompareOptions& wanted)
        : options(wanted), as_it_is(wanted.white_space == WhiteSpace::counts && !wanted.ignore_case)
    {
    }

    std::string_view key(const Text& text, std::size_t line)
    {
        if (as_it_is)
            return options.ignore_line_ends ? text.line(line) : text.whole_line(line);
        std::string& reduced = owned.emplace_back(reduced_line(text.line(line), options));
        if (!options.ignore_line_ends)
            reduced += line_end_text(text.line_end(line));
        return reduced;
    }

  private:
    const CompareOptions& options;
    bool as_it_is;
    std::deque<std::string> owned;
};

/** The C library's table for all of Unicode, whatever the process's locale. */
char32_t lower_case(char32_t character)
{
    static const locale_t all_characters = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (character < 0x80 || all_characters == nullptr)
        return character >= 'A' && character <= 'Z' ? character + ('a' - 'A') : character;
    return static_cast<char32_t>(::towlower_l(static_cast<std::wint_t>(character), all_characters));
}

} // namespace

std::string lower_case(std::string_view text)
{
    std::string lower;
    lower.reserve(text.size());
    for (std::size_t at = 0; at < text.size();)
        append_character(lower, lower_case(take_character(text, at)));
    return lower;
}

bool is_blank(std::string_view line)
{
    return std::ranges::all_of(
        line, [](char byte) { return is_white(byte) || byte == '\r' || byte == '\n'; });
}

std::string reduced_line(std::string_view line, const CompareOptions& options)
{
    std::string reduced;
    switch (options.white_space) {
    case WhiteSpace::counts:
        reduced = line;
        break;
    case WhiteSpace::amount_ignored:
        reduced = with_single_spaces(line);
        break;
    case WhiteSpace::ignored:
        reduced = without_white_space(line);
        break;
    }
    return options.ignore_case ? lower_case(reduced) : reduced;
}

std::vector<LineNumbers> number_lines(const Texts& texts, const CompareOptions& options,
                                      const std::stop_token& stop)
{
    std::size_t all_lines = 0;
    for (const auto& text : texts)
        all_lines += text->line_count();
    LineTable table(all_lines);
    LineKeys keys(options);
    std::vector<LineNumbers> numbers(texts.size());
    for (std::size_t index = 0; index < texts.size(); ++index) {
        const Text& text = *texts[index];
        numbers[index].reserve(text.line_count());
        for (std::size_t line = 0; line < text.line_count() && !stop.stop_requested(); ++line)
            numbers[index].push_back(table.number(keys.key(text, line)));
    }
    return numbers;
}
