/*
 * Where a caret goes from a place in a text: by characters as users count them, by words, by lines.
 * Places stay within the text's lines.
 */
#pragma once

#include "viewer/window/row_source.h"

TextPosition text_end(const RowSource& source);

/** The same place, or the nearest one that the text has. */
TextPosition within(const RowSource& source, TextPosition place);

/** A letter with all its marks is one character; behind a line's last one comes the next line. */
TextPosition next_character(const RowSource& source, TextPosition place);
TextPosition previous_character(const RowSource& source, TextPosition place);

TextPosition next_word(const RowSource& source, TextPosition place);
TextPosition previous_word(const RowSource& source, TextPosition place);

/** The word, the white space or the single character around a byte of a line. */
Span word_around(std::string_view line, std::size_t byte);
