/*
 * The result of a merge as the user works on it. It begins with what resolved itself, and an empty
 * place for each conflict. Each region can take the lines of any contributor, of several in an
 * order, or typed text, and can be put back. All that changes it can be undone and redone without
 * limit. What comes from a contributor keeps its ends of lines; a typed line gets the end of its
 * neighbours.
 *
 * The result is shown in rows: one for each line, and one without a line for each unresolved
 * conflict. A result that ends with an end of line has one more row, empty, for the caret.
 */
#pragma once

#include "viewer/core/merge.h"
#include "viewer/core/text.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** A place in the result: a row, and a byte in its line on a character's boundary. */
struct ResultPosition {
    std::size_t row = 0;
    std::size_t column = 0;

    auto
    operator<=>(const ResultPosition&) const = default; // NOLINT(modernize-use-nullptr): sees 0
};

/** Where a row of the result comes from. */
enum class RowOrigin : std::uint8_t {
    contributor,
    typed,
    unresolved, // in place of a conflict
    end,        // the empty row behind the last end of line
};

struct ResultRow {
    std::string_view content{};  // without the end of line; valid until the next change
    LineEnd end = LineEnd::none; // none also for rows that are no line
    RowOrigin origin = RowOrigin::contributor;
    std::size_t contributor = 0; // for RowOrigin::contributor
    std::size_t region = 0;
};

/** What a region takes. */
struct RegionChoice {
    bool resolved = true;
    bool typed = false;                    // at least in part
    std::vector<std::size_t> contributors; // not typed: whose lines, in their order; of none: empty

    bool operator==(const RegionChoice&) const = default;
};

class MergeResult
{
  public:
    MergeResult(Texts contributors, MergePlan plan);

    const MergePlan& plan() const { return merge_plan; }
    const Texts& contributors() const { return texts; }

    // Rows.
    std::size_t row_count() const;
    ResultRow row(std::size_t index) const;
    /** The rows of a region: none for one that resolved to nothing. */
    LineRange rows_of(std::size_t region) const;
    /** The region at a row. */
    std::size_t region_at(std::size_t row) const { return this->row(row).region; }

    // Choices; each is one step for undo.
    RegionChoice choice(std::size_t region) const;
    /** Gives a region the lines of contributors in an order; of none: leaves it empty, resolved. */
    void choose(std::size_t region, const std::vector<std::size_t>& contributors);
    /** Puts behind what the region takes the lines of one more contributor; the first one for an
        unresolved region. */
    void choose_also(std::size_t region, std::size_t contributor);
    /** Gives every unresolved conflict the lines of one contributor. */
    void choose_for_unresolved(std::size_t contributor);
    /** As it was at the beginning. */
    void put_back(std::size_t region);

    // Typing.
    /** Replaces the text between two places by typed text, in one step for undo, or as part of the
        last one. Any end of line in `text` stands for that of the neighbours. Typing into an
        unresolved conflict, or deleting it, resolves it. Returns the place behind the new text. */
    ResultPosition replace(ResultPosition begin, ResultPosition end, std::string_view text,
                           bool join_last_step = false);
    /** The text between two places, with its ends of lines. */
    std::string text_between(ResultPosition begin, ResultPosition end) const;

    // Steps.
    bool can_undo() const { return !done.empty(); }
    bool can_redo() const { return !undone.empty(); }
    /** Each returns the first row that changed. */
    std::size_t undo();
    std::size_t redo();
    /** Whether it differs from the state of the last mark_saved(), at first the beginning. */
    bool has_unsaved_work() const;
    void mark_saved();

    // Progress.
    std::size_t conflict_count() const;
    std::size_t resolved_count() const;
    bool is_resolved() const { return resolved_count() == conflict_count(); }
    /** The nearest unresolved region behind or before a row. */
    std::optional<std::size_t> next_unresolved(std::size_t row) const;
    std::optional<std::size_t> previous_unresolved(std::size_t row) const;

    /** The file to write, in the encoding of the first contributor. Unresolved conflicts give
        nothing. */
    std::string bytes() const;

  private:
    /** Lines of one origin. Pieces in order make the result; a region without any is empty. */
    struct Piece {
        std::size_t region = 0;
        RowOrigin origin = RowOrigin::contributor;
        std::size_t contributor = 0;
        std::shared_ptr<const Text> text{}; // null for an unresolved conflict
        LineRange lines{};

        std::size_t row_count() const { return text ? lines.size() : 1; }
    };

    /** Pieces from `at` on gave way to others. */
    struct Splice {
        std::size_t at = 0;
        std::vector<Piece> removed{};
        std::vector<Piece> inserted{};
    };

    /** What undo takes back at once. */
    struct Step {
        std::size_t id = 0; // differs from those of all other states
        std::vector<Splice> splices{};
    };

    /** Where a row is. */
    struct Place {
        std::size_t piece;
        std::size_t line; // of the piece's text
    };

    Piece contributed(std::size_t region, std::size_t contributor) const;
    static Piece typed(std::size_t region, std::string content);
    Piece initial(std::size_t region) const;

    LineRange pieces_of(std::size_t region) const;
    Place place_of(std::size_t row) const;
    std::size_t end_row() const { return first_rows.back(); }
    bool has_row_behind_end() const;
    LineEnd stored_end(std::size_t row) const;
    LineEnd neighbours_end(std::size_t row) const;

    Splice splice_for_typing(std::size_t first_row, std::size_t last_row,
                             std::string content) const;

    void put(std::size_t at, std::size_t count, const std::vector<Piece>& others);
    void count_rows(std::size_t from);
    std::size_t apply(const std::vector<Splice>& splices, bool back);
    void do_step(std::vector<Splice> splices, bool join_last_step = false);
    void choose_pieces(std::size_t region, std::vector<Piece> chosen);
    std::size_t state_id() const { return done.empty() ? 0 : done.back().id; }

    Texts texts;
    MergePlan merge_plan;
    std::vector<Piece> pieces;
    std::vector<std::size_t> first_rows; // of each piece, and their number behind the last
    std::vector<Step> done;
    std::vector<Step> undone;
    std::size_t last_id = 0;
    std::size_t saved_id = 0;
};
