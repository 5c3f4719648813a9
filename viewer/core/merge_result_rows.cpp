#include "viewer/core/merge_result.h"

#include <algorithm>

std::size_t MergeResult::row_count() const
{
    return end_row() + (has_row_behind_end() ? 1 : 0);
}

/** There is one in an empty result, too. */
bool MergeResult::has_row_behind_end() const
{
    if (end_row() == 0)
        return true;
    const Place last = place_of(end_row() - 1);
    return pieces[last.piece].text && stored_end(end_row() - 1) != LineEnd::none;
}

MergeResult::Place MergeResult::place_of(std::size_t row) const
{
    const auto behind = std::ranges::upper_bound(first_rows, row);
    const auto piece = static_cast<std::size_t>(behind - first_rows.begin()) - 1;
    return {piece, pieces[piece].lines.begin + row - first_rows[piece]};
}

/** The end that a line has in its text; none for rows that are no line. */
LineEnd MergeResult::stored_end(std::size_t row) const
{
    const Place place = place_of(row);
    const Piece& piece = pieces[place.piece];
    return piece.text ? piece.text->line_end(place.line) : LineEnd::none;
}

/** The end of the line itself, else of the nearest one above that has one, else below. */
LineEnd MergeResult::neighbours_end(std::size_t row) const
{
    for (std::size_t above = std::min(row + 1, end_row()); above-- > 0;)
        if (const LineEnd end = stored_end(above); end != LineEnd::none)
            return end;
    for (std::size_t below = row + 1; below < end_row(); ++below)
        if (const LineEnd end = stored_end(below); end != LineEnd::none)
            return end;
    const bool has_lines = texts.front()->line_count() > 0;
    const LineEnd end = has_lines ? texts.front()->line_end(0) : LineEnd::none;
    return end == LineEnd::none ? LineEnd::lf : end;
}

ResultRow MergeResult::row(std::size_t index) const
{
    if (index >= end_row())
        return {.origin = RowOrigin::end, .region = pieces.empty() ? 0 : pieces.back().region};
    const Place place = place_of(index);
    const Piece& piece = pieces[place.piece];
    ResultRow row{.origin = piece.origin, .contributor = piece.contributor, .region = piece.region};
    if (piece.text) {
        row.content = piece.text->line(place.line);
        row.end = piece.text->line_end(place.line);
        if (row.end == LineEnd::none && index + 1 < end_row())
            row.end = neighbours_end(index); // the last line of its text, but not of the result
    }
    return row;
}

LineRange MergeResult::rows_of(std::size_t region) const
{
    const LineRange own = pieces_of(region);
    return {first_rows[own.begin], first_rows[own.end]};
}

std::string MergeResult::text_between(ResultPosition begin, ResultPosition end) const
{
    if (begin.row == end.row)
        return std::string(row(begin.row).content.substr(begin.column, end.column - begin.column));
    const auto whole = [](const ResultRow& row) {
        return std::string(row.content).append(line_end_text(row.end));
    };
    std::string text = whole(row(begin.row)).substr(begin.column);
    for (std::size_t between = begin.row + 1; between < end.row; ++between)
        text += whole(row(between));
    return text.append(row(end.row).content.substr(0, end.column));
}

std::string MergeResult::bytes() const
{
    std::string content;
    for (std::size_t index = 0; index < pieces.size(); ++index) {
        const Piece& piece = pieces[index];
        if (!piece.text || piece.lines.empty())
            continue;
        content += piece.text->lines(piece.lines);
        const std::size_t last_row = first_rows[index + 1] - 1;
        if (stored_end(last_row) == LineEnd::none)
            content += line_end_text(row(last_row).end);
    }
    return encode_text(content, texts.front()->encoding(), merge_plan.has_mark);
}
