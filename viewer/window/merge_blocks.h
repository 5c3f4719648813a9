/*
 * A merge's regions as the rows of a compare, and how they look there: block i stands for region i.
 */
#pragma once

#include "viewer/core/comparison.h"
#include "viewer/core/merge_result.h"
#include "viewer/window/compare_rows.h"

Comparison blocks_of(const MergePlan& plan, const Texts& contributors);

/** The region that a block of blocks_of stands for. */
std::size_t region_of(const Comparison& blocks, const Block& block);

/** How a contributor's lines in the block of a region look, by what is chosen for the region. */
BlockLook merge_look(const MergeResult& result, std::size_t region, const Block& block,
                     std::size_t contributor);
