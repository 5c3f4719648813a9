/*
 * Finding a phrase in one text. Matches are bytes of the text's content; Text tells their lines. A
 * phrase is taken as it is: no patterns.
 */
#pragma once

#include "viewer/core/changed_words.h"
#include "viewer/core/text.h"

#include <cstddef>
#include <optional>
#include <string_view>

struct SearchOptions {
    bool match_case = false;
    bool wrap = true;
};

/** The first match that begins at `from` or behind it; with wrap from the beginning on after that.
    An empty phrase is never found. */
std::optional<Span> find_next(std::string_view content, std::string_view phrase, std::size_t from,
                              const SearchOptions& options);

/** The last match that begins before `from`; with wrap from the end on after that. */
std::optional<Span> find_previous(std::string_view content, std::string_view phrase,
                                  std::size_t from, const SearchOptions& options);
