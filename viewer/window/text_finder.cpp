#include "viewer/window/text_finder.h"

#include "viewer/core/search.h"

#include <algorithm>

namespace
{

std::size_t offset_of(const Text& text, TextPosition place)
{
    const std::size_t line = std::min(place.line, text.line_count());
    return std::min(text.line_start(line) + place.byte, text.content().size());
}

TextPosition place_of(const Text& text, std::size_t offset)
{
    const std::size_t line = text.line_at(offset);
    return {line, offset - text.line_start(line)};
}

std::optional<Span> find_once(const Text& text, std::size_t from, const Phrase& phrase)
{
    const SearchOptions options{.match_case = phrase.match_case, .wrap = false};
    return phrase.forward ? find_next(text.content(), phrase.text, from, options)
                          : find_previous(text.content(), phrase.text, from, options);
}

} // namespace

std::optional<Hit> find_in_columns(const Texts& texts, std::size_t column, TextPosition from,
                                   const Phrase& phrase)
{
    if (phrase.text.empty() || column >= texts.size())
        return std::nullopt;
    const std::size_t count = texts.size();
    std::size_t offset = offset_of(*texts[column], from);
    for (std::size_t step = 0; step <= count; ++step) { // the first column once more at the end
        const std::size_t index =
            phrase.forward ? (column + step) % count : (column + count - step % count) % count;
        const bool is_around =
            phrase.forward ? step > 0 && index <= column : step > 0 && index >= column;
        if (is_around && !phrase.wraps)
            return std::nullopt;
        const Text& text = *texts[index];
        if (step > 0)
            offset = phrase.forward ? 0 : text.content().size();
        if (const auto found = find_once(text, offset, phrase))
            return Hit{index, place_of(text, found->begin), place_of(text, found->end)};
    }
    return std::nullopt;
}
