/*
 * Letters in lower case, by the C library's table for all of Unicode, whatever the process's
 * locale. One character stands for one: what needs more in other languages is left alone.
 */
#pragma once

#include "viewer/core/characters.h"

#include <cstddef>
#include <string>
#include <string_view>

/** For characters beyond ASCII. */
char32_t lower_case_beyond_ascii(char32_t character);

inline char32_t lower_case(char32_t character)
{
    if (character < 0x80)
        return character >= 'A' && character <= 'Z' ? character + ('a' - 'A') : character;
    return lower_case_beyond_ascii(character);
}

/** Appends the character that begins at `at` in lower case, and moves `at` behind it. */
inline void append_lower_case(std::string& text, std::string_view from, std::size_t& at)
{
    append_character(text, lower_case(take_character(from, at)));
}

std::string lower_case(std::string_view text);
