/*
 * The difference of two sequences of line numbers, as hunks. libgit2 finds them; they are those
 * that git finds in the texts.
 */
#pragma once

#include "viewer/core/text.h"

#include <cstdint>
#include <span>
#include <vector>

/** Lines of one side that stand for lines of the other; one of the two may be empty. */
struct Hunk {
    LineRange first;
    LineRange second;

    bool operator==(const Hunk&) const = default;
};

/** In order; at least one equal line is between two hunks. */
std::vector<Hunk> find_hunks(std::span<const std::uint32_t> first,
                             std::span<const std::uint32_t> second);

/** Does what the first find_hunks would do once, which takes a few milliseconds. */
void prepare_find_hunks();
