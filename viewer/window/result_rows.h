/*
 * The rows of a merge's result, for the column that paints and edits it. Its lines are the result's
 * rows: an unresolved conflict's place is one of them, without text.
 */
#pragma once

#include "viewer/core/merge_result.h"
#include "viewer/window/line_parts.h"
#include "viewer/window/row_map.h"
#include "viewer/window/row_source.h"
#include "viewer/window/view_style.h"

#include <optional>

class ResultRows : public RowSource
{
  public:
    /** `merged` must live as long as this. */
    explicit ResultRows(const MergeResult& merged) : result(merged) {}

    void set_style(SharedStyle shared);
    void set_wrap_width(qreal width);
    void set_current(std::optional<std::size_t> region) { current = region; }

    /** The result has changed. */
    void lay_out();

    const RowMap& map() const { return rows; }

    std::size_t row_count() const override { return rows.count(); }
    PaintedRow row(std::size_t index) const override;
    std::size_t row_of(TextPosition place) const override;
    std::size_t line_count() const override { return result.row_count(); }
    std::string_view line(std::size_t index) const override { return result.row(index).content; }
    std::string text_between(TextPosition begin, TextPosition end) const override;

  private:
    LineParts parts(std::string_view line) const;
    std::size_t number_of(std::size_t line, std::size_t region) const;

    const MergeResult& result;
    SharedStyle style{};
    RowMap rows{};
    mutable LinePartsCache parts_cache{};
    qreal wrap_width = 0;
    std::optional<std::size_t> current{};
    std::vector<std::size_t> unresolved{}; // regions, in order
};

/** How a region of the result is tinted. */
Tint result_tint(const MergeResult& result, std::size_t region);
