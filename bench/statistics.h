/*
 * What the benchmarks say about their samples.
 */
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

using Samples = std::vector<double>;

/** The value in the middle, or between the two there. `samples` holds one at least. */
inline double median(Samples samples)
{
    std::sort(samples.begin(), samples.end());
    const std::size_t middle = samples.size() / 2;
    return samples.size() % 2 != 0 ? samples[middle] : (samples[middle - 1] + samples[middle]) / 2;
}

/** The lowest value that `share` of all samples, more than 0 and at most 1, do not exceed. */
inline double percentile(Samples samples, double share)
{
    std::sort(samples.begin(), samples.end());
    const double rank = std::ceil(share * static_cast<double>(samples.size()));
    return samples[static_cast<std::size_t>(rank) - 1];
}
