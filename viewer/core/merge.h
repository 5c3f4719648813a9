/*
 * What a merge is made of: regions, in order, that together cover every line of every contributor.
 * With an ancestor, which is the first contributor, a region that one contributor changed, or
 * several alike, is resolved by itself; one that two changed differently is a conflict. Without an
 * ancestor nothing tells who is right, and every difference is a conflict. Conflicts are a value
 * here, not a failure. For three contributors the outcome is that of git's three-way merge.
 */
#pragma once

#include "viewer/core/text.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

enum class RegionKind : std::uint8_t {
    unchanged, // the same lines in all contributors
    changed,   // resolved by itself: changed by one, or alike by several
    conflict,
};

struct MergeRegion {
    RegionKind kind = RegionKind::unchanged;
    std::size_t source = 0;       // whose lines the result takes; not for a conflict
    std::vector<LineRange> lines; // of each contributor
};

struct MergePlan {
    bool first_is_ancestor = false;
    bool has_mark = false; // whether the result begins with a byte-order mark
    std::vector<MergeRegion> regions;

    std::size_t conflict_count() const;
};

/** Plans the merge of two contributors or more; an ancestor takes three. Nothing after a stop. */
std::optional<MergePlan> plan_merge(const Texts& contributors, bool first_is_ancestor,
                                    const std::stop_token& stop = {});

/** The merged file's bytes, in the encoding of the first contributor; nothing when there are
    conflicts. */
std::optional<std::string> automatic_merge(const Texts& contributors, const MergePlan& plan);
