#include "viewer/core/search.h"

#include "viewer/core/characters.h"
#include "viewer/core/letter_case.h"

#include <algorithm>
#include <string>

namespace
{

std::u32string in_lower_case(std::string_view phrase)
{
    std::u32string characters;
    for (std::size_t at = 0; at < phrase.size();)
        characters += lower_case(take_character(phrase, at));
    return characters;
}

/** The end of a match that begins at `at`. */
std::optional<std::size_t> match_end(std::string_view content, std::size_t at,
                                     const std::u32string& phrase)
{
    if (!begins_character(content[at]))
        return std::nullopt;
    for (const char32_t character : phrase)
        if (at == content.size() || lower_case(take_character(content, at)) != character)
            return std::nullopt;
    return at;
}

std::optional<Span> exact_match(std::size_t at, std::string_view phrase)
{
    return at == std::string_view::npos ? std::nullopt
                                        : std::optional(Span{at, at + phrase.size()});
}

std::optional<Span> first_match(std::string_view content, std::string_view phrase, std::size_t from,
                                bool match_case)
{
    if (match_case)
        return exact_match(content.find(phrase, from), phrase);
    const std::u32string characters = in_lower_case(phrase);
    for (std::size_t at = from; at < content.size(); ++at)
        if (const auto end = match_end(content, at, characters))
            return Span{at, *end};
    return std::nullopt;
}

std::optional<Span> last_match(std::string_view content, std::string_view phrase,
                               std::size_t before, bool match_case)
{
    if (before == 0)
        return std::nullopt;
    if (match_case)
        return exact_match(content.rfind(phrase, before - 1), phrase);
    const std::u32string characters = in_lower_case(phrase);
    for (std::size_t at = std::min(before, content.size()); at-- > 0;)
        if (const auto end = match_end(content, at, characters))
            return Span{at, *end};
    return std::nullopt;
}

} // namespace

std::optional<Span> find_next(std::string_view content, std::string_view phrase, std::size_t from,
                              const SearchOptions& options)
{
    if (phrase.empty())
        return std::nullopt;
    const auto match = first_match(content, phrase, from, options.match_case);
    return match || !options.wrap || from == 0
               ? match
               : first_match(content, phrase, 0, options.match_case);
}

std::optional<Span> find_previous(std::string_view content, std::string_view phrase,
                                  std::size_t from, const SearchOptions& options)
{
    if (phrase.empty())
        return std::nullopt;
    const auto match = last_match(content, phrase, from, options.match_case);
    return match || !options.wrap ? match
                                  : last_match(content, phrase, content.size(), options.match_case);
}
