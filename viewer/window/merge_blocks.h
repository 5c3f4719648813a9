/*
 * A merge's regions as the rows of a compare: block i stands for region i.
 */
#pragma once

#include "viewer/core/comparison.h"
#include "viewer/core/merge.h"

Comparison blocks_of(const MergePlan& plan, const Texts& contributors);

/** The region that a block of blocks_of stands for. */
std::size_t region_of(const Comparison& blocks, const Block& block);
