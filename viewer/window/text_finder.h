/*
 * Finds a phrase in columns side by side: in the column at hand from a place on, then in the
 * columns behind it, and around where that is wanted.
 */
#pragma once

#include "viewer/window/row_source.h"

#include <optional>
#include <string>
#include <vector>

struct Phrase {
    std::string text{};
    bool match_case = false;
    bool wraps = true;
    bool forward = true;
};

struct Hit {
    std::size_t column = 0;
    TextPosition begin{};
    TextPosition end{};
};

/** `from` is where to begin in `column`: for forward the end of what was found last, else its
    beginning. */
std::optional<Hit> find_in_columns(const std::vector<const RowSource*>& columns, std::size_t column,
                                   TextPosition from, const Phrase& phrase);
