/*
 * Two contributors or more, compared and laid out in rows for columns side by side. A block is a
 * stretch of rows: per contributor a range of lines, in order, and gaps where others have more. In
 * a changed block lines that are like each other share a row. The first contributor is the measure
 * for the others. Rows are computed, not stored, but for those of blocks where lines do not simply
 * follow one another; looking one up takes a binary search.
 */
#pragma once

#include "viewer/core/line_matching.h"
#include "viewer/core/line_pairing.h"
#include "viewer/core/text.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stop_token>
#include <vector>

enum class BlockKind : std::uint8_t {
    equal,
    different,
    ignored,      // differs in nothing but blank lines that are to be ignored: no difference
    not_compared, // see Comparison::before_comparing
};

/** A contributor's lines in a block beside those of the first; for the first itself beside those of
    the others that differ. */
enum class Change : std::uint8_t {
    none,    // the same lines
    changed, // other lines
    added,   // lines where the other has none
    missing, // no lines where the other has some
};

struct Block {
    BlockKind kind = BlockKind::equal;
    std::size_t first_row = 0;
    std::size_t row_count = 0;
    std::vector<LineRange> lines; // of each contributor
    std::vector<Change> changes;  // of each contributor
    LineRows rows{};              // empty: all lines from the first row on, without gaps

    /** The line of a contributor in a row of this block; nothing for a gap. */
    std::optional<std::size_t> line_at(std::size_t row, std::size_t contributor) const;
};

/** Holds no text, only numbers of lines. */
class Comparison
{
  public:
    /** No contributors and no rows. */
    Comparison() = default;

    /** Takes blocks in order; sets their rows. */
    explicit Comparison(std::vector<Block> in_order);

    /** All lines from the top in one block: what can be shown while the comparison still runs. */
    static Comparison before_comparing(const Texts& contributors);

    std::size_t row_count() const;
    const std::vector<Block>& blocks() const { return all; }

    /** The block that holds a row; `row` is below row_count(). */
    const Block& block_at(std::size_t row) const;

    /** The line of a contributor in a row; nothing for a gap. */
    std::optional<std::size_t> line_at(std::size_t row, std::size_t contributor) const;

    /** The row that shows a line of a contributor. */
    std::size_t row_of(std::size_t contributor, std::size_t line) const;

    /** Differences are counted from 0 to difference_count() - 1. */
    std::size_t difference_count() const { return different.size(); }
    const Block& difference(std::size_t index) const { return all[different[index]]; }

    /** The difference that holds a row. */
    std::optional<std::size_t> difference_at(std::size_t row) const;

    /** The first difference that begins below a row, or the last one that begins above it. */
    std::optional<std::size_t> next_difference(std::size_t row) const;
    std::optional<std::size_t> previous_difference(std::size_t row) const;

  private:
    std::vector<Block> all;
    std::vector<std::size_t> different; // indices of blocks
};

/** How what a contributor has, or lacks, in one row of a different block stands beside the others;
    a line of the block can be the same as those beside it. */
Change change_in_row(const Texts& contributors, const Block& block, std::size_t row,
                     std::size_t contributor);

/** Compares two texts or more. Nothing after a stop. */
std::optional<Comparison> compare(const Texts& contributors, const CompareOptions& options,
                                  const std::stop_token& stop = {});

/** In what all contributors are alike, whatever the options. */
struct Likeness {
    bool same_characters = true; // the lines without their ends
    bool same_line_ends = true;  // line by line, the end of the last one included
    bool same_marks = true;
    bool same_encodings = true;

    bool identical() const
    {
        return same_characters && same_line_ends && same_marks && same_encodings;
    }
};

Likeness likeness(const Texts& contributors);

/** One of nine English sentences: in what contributors with the same characters differ, or that
    they are identical. Null when their characters differ. */
const char* likeness_sentence(const Likeness& likeness);
