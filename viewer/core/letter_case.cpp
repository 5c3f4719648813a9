#include "viewer/core/letter_case.h"

#include <clocale>
#include <cwctype>

char32_t lower_case_beyond_ascii(char32_t character)
{
    static const locale_t all_characters = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (all_characters == nullptr)
        return character;
    return static_cast<char32_t>(::towlower_l(static_cast<std::wint_t>(character), all_characters));
}

std::string lower_case(std::string_view text)
{
    std::string lower;
    for (std::size_t at = 0; at < text.size();)
        append_lower_case(lower, text, at);
    return lower;
}
