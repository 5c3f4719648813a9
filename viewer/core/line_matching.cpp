#include "viewer/core/line_matching.h"

#include "viewer/core/letter_case.h"

#include <algorithm>
#include <bit>
#include <deque>
#include <functional>
#include <utility>

namespace
{

/** Gives each distinct line its number. An open hash table that never grows: the number of all
   lines is known, and no node is allocated for any. */
class LineTable
{
  public:
    explicit LineTable(std::size_t most_lines) : slots(std::bit_ceil(2 * most_lines + 1)) {}

    /** `keep` gives a text that equals `line` and stays; it is asked for new lines only. */
    template<class Keep>
    std::uint32_t number(std::string_view line, const Keep& keep)
    {
        const std::size_t hash = std::hash<std::string_view>()(line);
        const std::size_t mask = slots.size() - 1;
        std::size_t at = hash & mask;
        while (slots[at] != 0 && !is_known(slots[at], hash, line))
            at = (at + 1) & mask;
        if (slots[at] == 0) {
            known.push_back({hash, keep(line)});
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

/** Runs of white space become one space, or nothing; at the end of the line always nothing. */
void append_reduced(std::string& text, std::string_view line, const CompareOptions& options)
{
    bool pending_space = false;
    for (std::size_t at = 0; at < line.size();) {
        if (options.white_space != WhiteSpace::counts && is_white(line[at])) {
            pending_space = options.white_space == WhiteSpace::amount_ignored;
            ++at;
            continue;
        }
        if (std::exchange(pending_space, false))
            text += ' ';
        if (options.ignore_case)
            append_lower_case(text, line, at);
        else
            text += line[at++];
    }
}

/** Numbers the lines of texts that outlive it. */
class Numbering
{
  public:
    Numbering(const CompareOptions& wanted, std::size_t most_lines)
        : options(wanted),
          reduces(wanted.white_space != WhiteSpace::counts || wanted.ignore_case),
          table(most_lines)
    {
    }

    std::uint32_t number(const Text& text, std::size_t line)
    {
        if (!reduces)
            return table.number(options.ignore_line_ends ? text.line(line) : text.whole_line(line),
                                [](std::string_view of_text) { return of_text; });
        reduced.clear();
        append_reduced(reduced, text.line(line), options);
        if (!options.ignore_line_ends)
            reduced += line_end_text(text.line_end(line));
        return table.number(reduced, [this](std::string_view key) -> std::string_view {
            return kept.emplace_back(key);
        });
    }

  private:
    CompareOptions options;
    bool reduces;
    LineTable table;
    std::string reduced;
    std::deque<std::string> kept;
};

} // namespace

bool is_blank(std::string_view line)
{
    return std::ranges::all_of(
        line, [](char byte) { return is_white(byte) || byte == '\r' || byte == '\n'; });
}

std::vector<LineNumbers> number_lines(const Texts& texts, const CompareOptions& options,
                                      const std::stop_token& stop)
{
    std::size_t all_lines = 0;
    for (const auto& text : texts)
        all_lines += text->line_count();
    Numbering numbering(options, all_lines);
    std::vector<LineNumbers> numbers(texts.size());
    for (std::size_t index = 0; index < texts.size(); ++index) {
        const Text& text = *texts[index];
        numbers[index].reserve(text.line_count());
        for (std::size_t line = 0; line < text.line_count() && !stop.stop_requested(); ++line)
            numbers[index].push_back(numbering.number(text, line));
    }
    return numbers;
}
