/*
 * Which lines of a changed block stand beside each other: lines that have most of their words in
 * common share a row, in order; what is like nothing fills the rows between from the top. Cheap and
 * bounded: blocks that would take long, and all that come when much has been done already, are laid
 * out from the top without being looked at.
 */
#pragma once

#include "viewer/core/text.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/** Of each contributor, the row of each of its lines, counted from the block's first. */
using LineRows = std::vector<std::vector<std::uint32_t>>;

/** A line of the first contributor and one of another, each counted from the block's first. */
struct LinePair {
    std::size_t first;
    std::size_t second;
};

using LinePairs = std::vector<LinePair>;

/** Lays out blocks, one after the other. */
class LinePairing
{
  public:
    /** `compared` must outlive this. */
    explicit LinePairing(const Texts& compared) : contributors(compared) {}

    /** The rows of a block with these lines; nothing where each contributor's lines simply follow
        one another from the first row on. */
    LineRows rows_of(const std::vector<LineRange>& lines);

  private:
    LinePairs pairs_of(std::size_t contributor, LineRange of_first, LineRange of_other);

    const Texts& contributors;
    std::size_t steps_left = 4'000'000; // steps of comparing words; a few milliseconds
};
