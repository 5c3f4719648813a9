#include "viewer/core/changed_words.h"

#include "viewer/core/characters.h"
#include "viewer/core/hunks.h"
#include "viewer/core/letter_case.h"

#include <algorithm>
#include <map>

namespace
{

constexpr std::size_t most_words = 20'000; // of both lines; more would be felt when a row is shown

enum class WordKind : std::uint8_t { letters, white_space, single };

bool is_ascii_letter_or_digit(char32_t character)
{
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z');
}

/** Scripts from U+2E80 on that write no spaces between words have words of one character. */
WordKind kind_of(char32_t character)
{
    if (character == ' ' || character == '\t' || character == '\v' || character == '\f')
        return WordKind::white_space;
    const bool letter = is_ascii_letter_or_digit(character) || character == '_' ||
                        (character >= 0xc0 && character < 0x2000) ||
                        (character >= 0x2c00 && character < 0x2e80);
    return letter ? WordKind::letters : WordKind::single;
}

/** The bytes of a line that are neither in the prefix nor in the suffix that two lines share. */
struct Middle {
    std::size_t begin;
    std::size_t end_of_first;
    std::size_t end_of_second;
};

/** Whether a word may reach over the place before this byte. */
bool may_continue_word(std::string_view line, std::size_t at)
{
    const auto kind = [](char byte) {
        return static_cast<unsigned char>(byte) >= 0x80 ? WordKind::letters
                                                        : kind_of(static_cast<unsigned char>(byte));
    };
    return at > 0 && at < line.size() && kind(line[at]) != WordKind::single &&
           kind(line[at - 1]) == kind(line[at]);
}

Middle shared_ends_cut_off(std::string_view first, std::string_view second)
{
    const std::size_t shorter = std::min(first.size(), second.size());
    const auto differing = std::mismatch(
        first.begin(), first.begin() + static_cast<std::ptrdiff_t>(shorter), second.begin());
    auto prefix = static_cast<std::size_t>(differing.first - first.begin());
    while (prefix > 0 && (may_continue_word(first, prefix) || may_continue_word(second, prefix)))
        --prefix;
    std::size_t suffix = 0;
    while (suffix < shorter - prefix &&
           first[first.size() - 1 - suffix] == second[second.size() - 1 - suffix])
        ++suffix;
    while (suffix > 0 && (may_continue_word(first, first.size() - suffix) ||
                          may_continue_word(second, second.size() - suffix)))
        --suffix;
    return {prefix, first.size() - suffix, second.size() - suffix};
}

/** Words from `begin` to `end`; ends early behind one too many. */
std::vector<Span> words_of(std::string_view line, std::size_t begin, std::size_t end,
                           const CompareOptions& options)
{
    std::vector<Span> words;
    WordKind last = WordKind::single;
    for (std::size_t at = begin; at < end && words.size() <= most_words;) {
        const std::size_t from = at;
        const WordKind kind = kind_of(take_character(line, at));
        if (kind != WordKind::single && kind == last && !words.empty() && words.back().end == from)
            words.back().end = at;
        else if (kind != WordKind::white_space || options.white_space != WhiteSpace::ignored)
            words.push_back({from, at});
        last = kind;
    }
    return words;
}

class WordNumbers
{
  public:
    explicit WordNumbers(const CompareOptions& wanted) : options(wanted) {}

    LineNumbers of(std::string_view line, const std::vector<Span>& words)
    {
        LineNumbers result;
        result.reserve(words.size());
        for (const Span& word : words) {
            const auto next = static_cast<std::uint32_t>(numbers.size());
            const auto key = reduced(line.substr(word.begin, word.end - word.begin));
            result.push_back(numbers.try_emplace(key, next).first->second);
        }
        return result;
    }

  private:
    std::string reduced(std::string_view word) const
    {
        std::size_t at = 0;
        if (options.white_space != WhiteSpace::counts &&
            kind_of(take_character(word, at)) == WordKind::white_space)
            return " ";
        return options.ignore_case ? lower_case(word) : std::string(word);
    }

    CompareOptions options;
    std::map<std::string, std::uint32_t> numbers;
};

void add_span(std::vector<Span>& spans, const std::vector<Span>& words, LineRange changed)
{
    if (!changed.empty())
        spans.push_back({words[changed.begin].begin, words[changed.end - 1].end});
}

void add_span(std::vector<Span>& spans, std::size_t begin, std::size_t end)
{
    if (begin < end)
        spans.push_back({begin, end});
}

std::vector<Span> united(std::vector<Span> spans)
{
    std::ranges::sort(spans, {}, &Span::begin);
    std::vector<Span> apart;
    for (const Span& span : spans) {
        if (!apart.empty() && span.begin <= apart.back().end)
            apart.back().end = std::max(apart.back().end, span.end);
        else
            apart.push_back(span);
    }
    return apart;
}

} // namespace

WordChanges changed_words(std::string_view first, std::string_view second,
                          const CompareOptions& options)
{
    WordChanges changes;
    const Middle middle = shared_ends_cut_off(first, second);
    const auto words_of_first = words_of(first, middle.begin, middle.end_of_first, options);
    const auto words_of_second = words_of(second, middle.begin, middle.end_of_second, options);
    if (words_of_first.size() + words_of_second.size() > most_words) {
        add_span(changes.first, middle.begin, middle.end_of_first);
        add_span(changes.second, middle.begin, middle.end_of_second);
        return changes;
    }
    WordNumbers numbers(options);
    const LineNumbers numbers_of_first = numbers.of(first, words_of_first);
    for (const Hunk& hunk : find_hunks(numbers_of_first, numbers.of(second, words_of_second))) {
        add_span(changes.first, words_of_first, hunk.first);
        add_span(changes.second, words_of_second, hunk.second);
    }
    return changes;
}

std::vector<std::vector<Span>> changed_words_of_row(const Texts& contributors,
                                                    const Comparison& comparison, std::size_t row,
                                                    const CompareOptions& options)
{
    std::vector<std::vector<Span>> spans(contributors.size());
    const Block& block = comparison.block_at(row);
    const auto line_of_first = block.line_at(row, 0);
    if (block.kind != BlockKind::different || !line_of_first)
        return spans;
    const std::string_view first = contributors[0]->line(*line_of_first);
    for (std::size_t index = 1; index < contributors.size(); ++index) {
        const auto line = block.line_at(row, index);
        if (!line || block.changes[index] == Change::none)
            continue;
        WordChanges changes = changed_words(first, contributors[index]->line(*line), options);
        spans[index] = std::move(changes.second);
        std::ranges::copy(changes.first, std::back_inserter(spans[0]));
    }
    spans[0] = united(std::move(spans[0]));
    return spans;
}
