/*
 * Which rows of a comparison are seen where: long equal stretches may be folded into one row, and a
 * row may be as high as several when lines wrap. Costs one entry for each block, and with wrapping
 * one number for each row.
 */
#pragma once

#include "viewer/core/comparison.h"

#include <cstdint>
#include <set>
#include <vector>

/** What is seen in one row of the window. */
struct SeenRow {
    std::size_t row = 0;    // of the comparison; the first hidden one for a fold
    std::size_t part = 0;   // which of its parts, when it wraps
    std::size_t hidden = 0; // for a fold: how many rows it stands for
};

class RowMap
{
  public:
    RowMap() = default;

    /** `part_ends` holds for each row how many parts it and all rows above have; empty: one each.
        With `collapse`, equal blocks are folded but for those in `opened`, told by first rows. */
    RowMap(const Comparison& comparison, std::vector<std::uint32_t> part_ends, bool collapse,
           const std::set<std::size_t>& opened);

    /** Rows that are no comparison's, none of them folded. */
    RowMap(std::size_t row_count, std::vector<std::uint32_t> part_ends);

    std::size_t count() const { return total; }
    SeenRow at(std::size_t seen) const;

    /** Where a row of the comparison begins; for a hidden one its fold. */
    std::size_t seen_at(std::size_t row) const;

  private:
    struct Stretch {
        std::size_t first_seen;
        std::size_t first_row;
        std::size_t row_count;
        bool folded;
    };

    void add(std::size_t first_row, std::size_t row_count, bool folded);
    std::size_t parts_before(std::size_t row) const;

    std::vector<std::uint32_t> ends;
    std::vector<Stretch> stretches;
    std::size_t total = 0;
};
