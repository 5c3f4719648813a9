#include "viewer/window/text_finder.h"

#include "viewer/core/search.h"
#include "viewer/window/text_moves.h"

namespace
{

/** From a place to the end of one column, or to its beginning. */
std::optional<Hit> find_in_column(const RowSource& source, TextPosition from, const Phrase& phrase)
{
    const SearchOptions options{.match_case = phrase.match_case, .wrap = false};
    const std::size_t count = source.line_count();
    std::size_t byte = from.byte;
    for (std::size_t line = from.line; line < count;) {
        const std::string_view text = source.line(line);
        const auto found = phrase.forward ? find_next(text, phrase.text, byte, options)
                                          : find_previous(text, phrase.text, byte, options);
        if (found)
            return Hit{.begin = {line, found->begin}, .end = {line, found->end}};
        line = phrase.forward ? line + 1 : line - 1; // before the first line comes none
        byte = phrase.forward || line >= count ? 0 : source.line(line).size();
    }
    return std::nullopt;
}

} // namespace

std::optional<Hit> find_in_columns(const std::vector<const RowSource*>& columns, std::size_t column,
                                   TextPosition from, const Phrase& phrase)
{
    const std::size_t count = columns.size();
    for (std::size_t step = 0; step <= count; ++step) { // the first column once more at the end
        const std::size_t index = (column + (phrase.forward ? step : count - step % count)) % count;
        const bool is_around = step > 0 && (phrase.forward ? index <= column : index >= column);
        if (is_around && !phrase.wraps)
            break;
        if (step > 0)
            from = phrase.forward ? TextPosition{} : text_end(*columns[index]);
        if (auto hit = find_in_column(*columns[index], from, phrase)) {
            hit->column = index;
            return hit;
        }
    }
    return std::nullopt;
}
