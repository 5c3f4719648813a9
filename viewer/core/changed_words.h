/*
 * What changed within a line, word by word. For the rows that are being shown: nothing of it is
 * kept. A word is a run of letters, digits and underscores; a run of white space; or one other
 * character, an ideograph included.
 */
#pragma once

#include "viewer/core/comparison.h"
#include "viewer/core/line_matching.h"
#include "viewer/core/text.h"

#include <cstddef>
#include <string_view>
#include <vector>

/** Bytes of a line, from `begin` up to, but not including, `end`; whole characters. */
struct Span {
    std::size_t begin = 0;
    std::size_t end = 0;

    bool operator==(const Span&) const = default;
};

struct WordChanges {
    std::vector<Span> first;
    std::vector<Span> second;
};

/** What of two lines differs, in order and apart from each other. Where very long lines differ in
    very many places, one span from the first to the last. */
WordChanges changed_words(std::string_view first, std::string_view second,
                          const CompareOptions& options);

/** The same for a row of a comparison, for each contributor: each beside the first one, and the
    first beside all others together. Nothing where a line is the same, or has no line beside it. */
std::vector<std::vector<Span>> changed_words_of_row(const Texts& contributors,
                                                    const Comparison& comparison, std::size_t row,
                                                    const CompareOptions& options);
