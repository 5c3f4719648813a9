/*
 * Characters of valid UTF-8, one at a time. For text that has been decoded: nothing is checked.
 */
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/** The character that begins at `at`, and moves `at` behind it. */
inline char32_t take_character(std::string_view text, std::size_t& at)
{
    const auto byte = [&] { return static_cast<unsigned char>(text[at++]); };
    const char32_t lead = byte();
    if (lead < 0x80)
        return lead;
    const auto tail = [&] { return byte() & 0x3fU; };
    char32_t character = lead < 0xe0 ? lead & 0x1fU : lead < 0xf0 ? lead & 0x0fU : lead & 0x07U;
    character = character << 6U | tail();
    if (lead >= 0xe0)
        character = character << 6U | tail();
    if (lead >= 0xf0)
        character = character << 6U | tail();
    return character;
}

inline void append_character(std::string& text, char32_t character)
{
    const auto append = [&](char32_t byte) { text += static_cast<char>(byte); };
    if (character < 0x80) {
        append(character);
        return;
    }
    if (character < 0x800) {
        append(0xc0U | character >> 6U);
    } else {
        if (character < 0x10000) {
            append(0xe0U | character >> 12U);
        } else {
            append(0xf0U | character >> 18U);
            append(0x80U | (character >> 12U & 0x3fU));
        }
        append(0x80U | (character >> 6U & 0x3fU));
    }
    append(0x80U | (character & 0x3fU));
}

/** Whether a byte of UTF-8 begins a character. */
inline bool begins_character(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0U) != 0x80U;
}

/** Whether each character is one cell of a monospaced font. */
inline bool is_printable_ascii(std::string_view text)
{
    unsigned char out_of_range = 0; // no early end: the loop over bytes is vectorised
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        out_of_range |=
            static_cast<unsigned char>(byte < 0x20U) | static_cast<unsigned char>(byte > 0x7eU);
    }
    return out_of_range == 0;
}
