/*
 * Where lines are broken to fit a width, kept for lines so long that working it out again for every
 * row that shows a part of them would be slow.
 */
#pragma once

#include "viewer/window/line_wrapping.h"

#include <map>
#include <memory>
#include <utility>

using LineParts = std::shared_ptr<const std::vector<std::size_t>>;

class LinePartsCache
{
  public:
    LineParts parts(std::string_view line, qreal width, const GlyphMetrics& metrics)
    {
        const auto broken = [&] {
            return std::make_shared<const std::vector<std::size_t>>(
                wrap_line(line, width, metrics));
        };
        if (line.size() < long_line)
            return broken();
        LineParts& kept = lines[{line.data(), line.size()}];
        if (!kept)
            kept = broken();
        return kept;
    }

    /** To be called when widths, metrics or lines change. */
    void clear() { lines.clear(); }

  private:
    static constexpr std::size_t long_line = 4096; // bytes

    std::map<std::pair<const char*, std::size_t>, LineParts> lines{};
};
