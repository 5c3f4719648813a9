/*
 * What the columns of a compare show: the contributors' texts, how their lines stand side by side,
 * what of it is folded or wrapped, and which difference is at hand. One CompareColumn for each
 * contributor gives its rows to the column that paints them.
 */
#pragma once

#include "viewer/core/comparison.h"
#include "viewer/window/line_parts.h"
#include "viewer/window/row_map.h"
#include "viewer/window/row_source.h"
#include "viewer/window/view_style.h"

#include <functional>
#include <optional>
#include <set>
#include <unordered_map>

/** How a contributor's lines in a block that is not equal are told apart. */
struct BlockLook {
    Tint tint = Tint::none;
    QChar sign{}; // in the margin
};

using LookOf = std::function<BlockLook(const Block& block, std::size_t contributor)>;

/** As changed, added or removed since the first contributor. */
BlockLook compare_look(const Block& block, std::size_t contributor);

class CompareRows
{
  public:
    /** Lays out anew. */
    void show(Texts contributors, Comparison compared);
    void set_style(SharedStyle shared);
    void set_look(LookOf look) { look_of = std::move(look); }
    BlockLook look(const Block& block, std::size_t contributor) const
    {
        return look_of(block, contributor);
    }

    /** The width that lines have for wrapping, of each contributor's column. */
    void set_wrap_widths(std::vector<qreal> widths);

    void set_current(std::optional<std::size_t> difference) { current = difference; }
    std::optional<std::size_t> current_difference() const { return current; }

    /** The difference behind, or before, the one at hand, or else what is seen first with this row
        of the comparison at the top. */
    std::optional<std::size_t> next_difference(std::size_t top_row) const;
    std::optional<std::size_t> previous_difference(std::size_t top_row) const;

    /** Shows what a fold hides. */
    void open_fold(std::size_t seen);

    const Texts& contributors() const { return texts; }
    const Comparison& comparison() const { return blocks; }
    const RowMap& map() const { return rows; }

    PaintedRow row(std::size_t seen, std::size_t contributor) const;
    std::size_t row_of(std::size_t contributor, TextPosition place) const;

  private:
    void lay_out();
    std::vector<std::uint32_t> part_ends() const;
    LineParts parts(std::size_t contributor, std::size_t line) const;
    const std::vector<std::vector<Span>>& words(std::size_t row) const;
    BlockLook look_in_row(const Block& block, std::size_t row, std::size_t contributor) const;
    bool ends_differ(const SeenRow& seen, std::size_t contributor, LineEnd end) const;
    void fill_line(PaintedRow& painted, const SeenRow& seen, std::size_t contributor,
                   std::size_t line) const;

    Texts texts;
    Comparison blocks;
    SharedStyle style;
    LookOf look_of = compare_look;
    std::vector<qreal> wrap_widths;
    std::set<std::size_t> opened; // first rows of blocks
    RowMap rows;
    std::optional<std::size_t> current;
    mutable LinePartsCache parts_cache;
    mutable std::unordered_map<std::size_t, std::vector<std::vector<Span>>> word_cache;
};

/** One contributor's rows. */
class CompareColumn : public RowSource
{
  public:
    CompareColumn(const CompareRows& all, std::size_t contributor_index)
        : rows(all), contributor(contributor_index)
    {
    }

    std::size_t row_count() const override { return rows.map().count(); }
    PaintedRow row(std::size_t index) const override { return rows.row(index, contributor); }
    std::size_t row_of(TextPosition place) const override
    {
        return rows.row_of(contributor, place);
    }
    std::size_t line_count() const override { return text().line_count(); }
    std::string_view line(std::size_t index) const override { return text().line(index); }
    std::string text_between(TextPosition begin, TextPosition end) const override;

  private:
    const Text& text() const { return *rows.contributors().at(contributor); }

    const CompareRows& rows;
    std::size_t contributor;
};
