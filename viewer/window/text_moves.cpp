#include "viewer/window/text_moves.h"

#include "viewer/core/characters.h"

#include <QChar>
#include <algorithm>

namespace
{

enum class CharacterClass { word, space, other };

char32_t character_at(std::string_view line, std::size_t byte)
{
    return take_character(line, byte);
}

CharacterClass class_of(char32_t character)
{
    if (QChar::isSpace(character))
        return CharacterClass::space;
    const bool is_word =
        QChar::isLetterOrNumber(character) || character == U'_' || QChar::isMark(character);
    return is_word ? CharacterClass::word : CharacterClass::other;
}

bool goes_with_the_one_before(char32_t character)
{
    return QChar::isMark(character) || character == 0x200d ||
           (character >= 0x1f3fb && character <= 0x1f3ff);
}

std::size_t behind_character(std::string_view line, std::size_t byte)
{
    char32_t last = take_character(line, byte);
    while (byte < line.size()) {
        const char32_t next = character_at(line, byte);
        if (!goes_with_the_one_before(next) && last != 0x200d)
            break;
        last = take_character(line, byte);
    }
    return byte;
}

std::size_t before_one_code_point(std::string_view line, std::size_t byte)
{
    do
        --byte;
    while (byte > 0 && !begins_character(line[byte]));
    return byte;
}

std::size_t before_character(std::string_view line, std::size_t byte)
{
    byte = before_one_code_point(line, byte);
    while (byte > 0) {
        const std::size_t before = before_one_code_point(line, byte);
        if (!goes_with_the_one_before(character_at(line, byte)) &&
            character_at(line, before) != 0x200d)
            break;
        byte = before;
    }
    return byte;
}

} // namespace

TextPosition text_end(const RowSource& source)
{
    if (source.line_count() == 0)
        return {};
    const std::size_t last = source.line_count() - 1;
    return {last, source.line(last).size()};
}

TextPosition within(const RowSource& source, TextPosition place)
{
    if (place.line >= source.line_count())
        return text_end(source);
    const std::string_view line = source.line(place.line);
    place.byte = std::min(place.byte, line.size());
    while (place.byte > 0 && place.byte < line.size() && !begins_character(line[place.byte]))
        --place.byte;
    return place;
}

TextPosition next_character(const RowSource& source, TextPosition place)
{
    if (place >= text_end(source))
        return text_end(source);
    const std::string_view line = source.line(place.line);
    if (place.byte >= line.size())
        return {place.line + 1, 0};
    return {place.line, behind_character(line, place.byte)};
}

TextPosition previous_character(const RowSource& source, TextPosition place)
{
    if (place.byte > 0)
        return {place.line, before_character(source.line(place.line), place.byte)};
    if (place.line == 0)
        return {};
    return {place.line - 1, source.line(place.line - 1).size()};
}

TextPosition next_word(const RowSource& source, TextPosition place)
{
    const TextPosition end = text_end(source);
    if (place >= end || place.byte >= source.line(place.line).size())
        return next_character(source, place);
    const std::string_view line = source.line(place.line);
    place.byte = word_around(line, place.byte).end;
    if (place.byte < line.size() &&
        class_of(character_at(line, place.byte)) == CharacterClass::space)
        place.byte = word_around(line, place.byte).end;
    return place;
}

TextPosition previous_word(const RowSource& source, TextPosition place)
{
    if (place.byte == 0)
        return previous_character(source, place);
    const std::string_view line = source.line(place.line);
    const auto before = [&](std::size_t byte) {
        return word_around(line, before_one_code_point(line, byte)).begin;
    };
    const std::size_t last = before_one_code_point(line, place.byte);
    place.byte = before(place.byte);
    if (place.byte > 0 && class_of(character_at(line, last)) == CharacterClass::space)
        place.byte = before(place.byte);
    return place;
}

Span word_around(std::string_view line, std::size_t byte)
{
    if (line.empty())
        return {};
    if (byte >= line.size())
        byte = before_one_code_point(line, line.size());
    const CharacterClass kind = class_of(character_at(line, byte));
    Span word{byte, behind_character(line, byte)};
    if (kind == CharacterClass::other)
        return word;
    while (word.begin > 0) {
        const std::size_t before = before_one_code_point(line, word.begin);
        if (class_of(character_at(line, before)) != kind)
            break;
        word.begin = before;
    }
    while (word.end < line.size() && class_of(character_at(line, word.end)) == kind)
        word.end = behind_character(line, word.end);
    return word;
}
