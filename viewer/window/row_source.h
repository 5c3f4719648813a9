/*
 * The rows that a column paints, made one at a time when they are to be seen. A source knows lines
 * and rows: a row is what is painted at one height, a line what the text has. With wrapping a line
 * takes several rows; a gap is a row without a line.
 */
#pragma once

#include "viewer/core/changed_words.h"
#include "viewer/core/text.h"
#include "viewer/window/viewer_palette.h"

#include <QChar>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** A place in a text: a line, and a byte in it on a character's boundary. */
struct TextPosition {
    std::size_t line = 0;
    std::size_t byte = 0;

    auto operator<=>(const TextPosition&) const = default; // NOLINT(modernize-use-nullptr): sees 0
};

enum class RowKind : std::uint8_t {
    text,
    gap,        // no line here, where another column has one
    fold,       // stands for lines that are not shown
    unresolved, // a conflict's place in a result
};

struct PaintedRow {
    RowKind kind = RowKind::gap;
    std::size_t line = 0;
    std::size_t number = 0;       // shown in the margin; 0 for none
    std::string_view text{};      // the whole line
    Span part{};                  // what of the line this row shows
    std::optional<LineEnd> end{}; // where the row shows the end of the line
    bool end_differs = false;     // so that it is seen
    Tint tint = Tint::none;
    QChar sign{};               // in the margin
    bool is_current = false;    // belongs to the difference at hand
    std::vector<Span> strong{}; // changed words, in bytes of the line
    std::size_t hidden = 0;     // fold: how many lines

    /** Whether a caret can be there. */
    bool has_line() const { return kind == RowKind::text || kind == RowKind::unresolved; }
};

class RowSource
{
  public:
    RowSource() = default;
    RowSource(const RowSource&) = delete;
    RowSource& operator=(const RowSource&) = delete;
    RowSource(RowSource&&) = delete;
    RowSource& operator=(RowSource&&) = delete;
    virtual ~RowSource() = default;

    virtual std::size_t row_count() const = 0;
    virtual PaintedRow row(std::size_t index) const = 0;
    virtual std::size_t row_of(TextPosition place) const = 0;

    virtual std::size_t line_count() const = 0;
    virtual std::string_view line(std::size_t index) const = 0;
    virtual std::string text_between(TextPosition begin, TextPosition end) const = 0;
};
