/*
 * Any number of contributors side by side: the hunks of each against the first, combined. Hunks
 * that overlap or touch in the first become one group; outside the groups all contributors have the
 * same lines.
 */
#pragma once

#include "viewer/core/hunks.h"
#include "viewer/core/line_matching.h"
#include "viewer/core/text.h"

#include <cstddef>
#include <span>
#include <stop_token>
#include <vector>

/** The hunks of each contributor but the first against the first. What is returned after a stop is
    of no use. */
std::vector<std::vector<Hunk>> hunks_against_first(std::span<const LineNumbers> numbers,
                                                   const std::stop_token& stop);

/** For each contributor a range of lines, and its hunks in it: none for the first, and none where
    its lines are those of the first. The hunks are those that align was given. */
struct AlignedGroup {
    std::vector<LineRange> lines;
    std::vector<std::span<const Hunk>> hunks;
};

/** In order. `hunks` are those of hunks_against_first. */
std::vector<AlignedGroup> align(std::span<const std::vector<Hunk>> hunks);

/** The lines of each contributor between two groups; `before` or `after` is null at the beginning
    and at the end, where `line_counts` are the contributors' numbers of lines. */
std::vector<LineRange> lines_between(const AlignedGroup* before, const AlignedGroup* after,
                                     std::span<const std::size_t> line_counts);
