#include "viewer/core/encoding.h"

#include "cmdline/encodings.h"
#include "viewer/core/characters.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace
{

struct Form {
    unsigned unit_bytes;
    bool high_byte_first;
};

/** Row for row those of encoding_types. */
constexpr std::array<Form, encoding_rows - 1> forms = {
    {{1, false}, {2, false}, {2, true}, {4, false}, {4, true}}};

bool is_surrogate(char32_t unit)
{
    return unit >= 0xd800 && unit <= 0xdfff;
}

/** Where the next byte that is not ASCII is. */
std::size_t skip_ascii(std::string_view bytes, std::size_t at)
{
    std::uint64_t eight = 0;
    while (at + sizeof eight <= bytes.size()) {
        std::memcpy(&eight, bytes.data() + at, sizeof eight);
        if ((eight & 0x8080808080808080U) != 0)
            break;
        at += sizeof eight;
    }
    while (at < bytes.size() && static_cast<unsigned char>(bytes[at]) < 0x80)
        ++at;
    return at;
}

/** How many bytes a sequence has by its first one; 0 when none begins with it. */
std::size_t sequence_length(unsigned char lead)
{
    if (lead < 0xc0 || lead >= 0xf8)
        return 0;
    return lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
}

/** What is wrong with the sequence that begins at `at` with a byte that is not ASCII. */
std::optional<TextFault> utf8_fault(std::string_view bytes, std::size_t at)
{
    const std::size_t length = sequence_length(static_cast<unsigned char>(bytes[at]));
    if (length == 0)
        return TextFault::not_a_character;
    if (at + length > bytes.size())
        return TextFault::truncated;
    for (std::size_t tail = 1; tail < length; ++tail)
        if (begins_character(bytes[at + tail]))
            return TextFault::truncated;
    const char32_t character = take_character(bytes, at);
    constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
    if (character < smallest[length])
        return TextFault::overlong;
    if (is_surrogate(character))
        return TextFault::surrogate;
    if (character > 0x10ffff)
        return TextFault::too_large;
    return std::nullopt;
}

std::optional<BadSequence> find_bad_utf8(std::string_view bytes)
{
    std::size_t at = skip_ascii(bytes, 0);
    while (at < bytes.size()) {
        if (const auto fault = utf8_fault(bytes, at))
            return BadSequence{*fault, at};
        at += sequence_length(static_cast<unsigned char>(bytes[at]));
        if (at < bytes.size() && static_cast<unsigned char>(bytes[at]) < 0x80)
            at = skip_ascii(bytes, at);
    }
    return std::nullopt;
}

template<Form form>
char32_t unit_at(std::string_view bytes, std::size_t at)
{
    char32_t unit = 0;
    for (unsigned index = 0; index < form.unit_bytes; ++index) {
        const unsigned place = form.high_byte_first ? form.unit_bytes - 1 - index : index;
        unit |= char32_t{static_cast<unsigned char>(bytes[at + index])} << (8U * place);
    }
    return unit;
}

struct Taken {
    char32_t character;
    std::size_t bytes;
};
using TakenOrFault = std::variant<Taken, TextFault>;

template<Form form>
TakenOrFault take_utf16(std::string_view bytes, std::size_t at)
{
    const char32_t unit = unit_at<form>(bytes, at);
    if (!is_surrogate(unit))
        return Taken{unit, 2};
    if (unit >= 0xdc00)
        return TextFault::unpaired_surrogate;
    if (bytes.size() - at < 4)
        return TextFault::truncated;
    const char32_t second = unit_at<form>(bytes, at + 2);
    if (second < 0xdc00 || second > 0xdfff)
        return TextFault::unpaired_surrogate;
    return Taken{0x10000U + ((unit & 0x3ffU) << 10U | (second & 0x3ffU)), 4};
}

template<Form form>
TakenOrFault take_utf32(std::string_view bytes, std::size_t at)
{
    const char32_t character = unit_at<form>(bytes, at);
    if (is_surrogate(character))
        return TextFault::surrogate;
    if (character > 0x10ffff)
        return TextFault::too_large;
    return Taken{character, 4};
}

template<Form form>
TakenOrFault take(std::string_view bytes, std::size_t at)
{
    if constexpr (form.unit_bytes == 2)
        return take_utf16<form>(bytes, at);
    else
        return take_utf32<form>(bytes, at);
}

template<Form form>
Decoded decode_units(std::string_view bytes)
{
    Decoded decoded;
    decoded.content.reserve(bytes.size() / form.unit_bytes);
    std::size_t at = 0;
    while (bytes.size() - at >= form.unit_bytes) {
        if (const char32_t unit = unit_at<form>(bytes, at); unit < 0x80) { // most of most texts
            decoded.content += static_cast<char>(unit);
            at += form.unit_bytes;
            continue;
        }
        const TakenOrFault next = take<form>(bytes, at);
        if (const auto* fault = std::get_if<TextFault>(&next)) {
            decoded.bad = BadSequence{*fault, at};
            return decoded;
        }
        append_character(decoded.content, std::get<Taken>(next).character);
        at += std::get<Taken>(next).bytes;
    }
    if (at < bytes.size())
        decoded.bad = BadSequence{TextFault::truncated, at};
    return decoded;
}

Decoded decode_utf8(std::string bytes)
{
    Decoded decoded{.content = std::move(bytes), .bad = std::nullopt};
    decoded.bad = find_bad_utf8(decoded.content);
    if (decoded.bad)
        decoded.content.resize(decoded.bad->offset);
    return decoded;
}

void append_unit(std::string& bytes, char32_t unit, const Form& form)
{
    std::array<char, 4> ordered{};
    for (unsigned index = 0; index < form.unit_bytes; ++index) {
        const unsigned place = form.high_byte_first ? form.unit_bytes - 1 - index : index;
        ordered[index] = static_cast<char>(unit >> (8U * place) & 0xffU);
    }
    bytes.append(ordered.data(), form.unit_bytes);
}

void append_in_form(std::string& bytes, char32_t character, const Form& form)
{
    if (form.unit_bytes == 2 && character > 0xffff) {
        append_unit(bytes, 0xd800U + ((character - 0x10000U) >> 10U), form);
        append_unit(bytes, 0xdc00U + (character & 0x3ffU), form);
    } else {
        append_unit(bytes, character, form);
    }
}

} // namespace

Decoded to_utf8(std::string bytes, int encoding)
{
    switch (encoding) {
    case 1:
        return decode_units<forms[1]>(bytes);
    case 2:
        return decode_units<forms[2]>(bytes);
    case 3:
        return decode_units<forms[3]>(bytes);
    case 4:
        return decode_units<forms[4]>(bytes);
    default:
        return decode_utf8(std::move(bytes));
    }
}

std::string from_utf8(std::string_view content, int encoding)
{
    const Form& form = forms.at(static_cast<std::size_t>(encoding));
    if (form.unit_bytes == 1)
        return std::string(content);
    std::string bytes;
    bytes.reserve(content.size() * form.unit_bytes);
    for (std::size_t at = 0; at < content.size();)
        append_in_form(bytes, take_character(content, at), form);
    return bytes;
}
