/*
 * Making the conflicts of two sides small, as git's three-way merge does: what both sides have in
 * common within a conflict is none, and conflicts with next to nothing between them are one.
 */
#pragma once

#include "viewer/core/alignment.h"
#include "viewer/core/line_matching.h"
#include "viewer/core/merge.h"

#include <span>
#include <vector>

struct DraftRegion {
    MergeRegion region;
    bool may_join; // not a conflict, but may become part of one that is on both sides of it
};

/** The regions that a conflict of an ancestor and two sides falls into: conflicts, and what the
    sides have in common between them. `numbers` are those of all three. */
std::vector<DraftRegion> refined_conflict(const AlignedGroup& conflict,
                                          std::span<const LineNumbers> numbers);

/** Makes one of any two conflicts between which there are only regions that may join, and there
    three lines at most, or none with an ASCII letter or digit. */
std::vector<DraftRegion> joined_conflicts(std::vector<DraftRegion> drafts, const Text& first_side);
