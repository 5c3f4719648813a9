#include "viewer/core/merge_result.h"

#include <utility>

namespace
{

/** Text with every end of line in it replaced by one. */
std::string with_ends(std::string_view text, LineEnd end)
{
    std::string replaced;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool is_crlf = text.substr(at, 2) == "\r\n";
        if (is_crlf)
            ++at;
        if (is_crlf || text[at] == '\n' || text[at] == '\r')
            replaced += line_end_text(end);
        else
            replaced += text[at];
    }
    return replaced;
}

/** Where a text that begins at the beginning of a row ends. */
ResultPosition position_behind(std::size_t first_row, std::string_view content)
{
    const Text text(std::string(content), 0, false);
    const std::size_t count = text.line_count();
    if (count == 0 || text.line_end(count - 1) != LineEnd::none)
        return {first_row + count, 0};
    return {first_row + count - 1, text.line(count - 1).size()};
}

} // namespace

ResultPosition MergeResult::replace(ResultPosition begin, ResultPosition end, std::string_view text,
                                    bool join_last_step)
{
    if (begin == end && text.empty())
        return begin;
    std::string content(row(begin.row).content.substr(0, begin.column));
    content += with_ends(text, neighbours_end(begin.row));
    const ResultPosition behind = position_behind(begin.row, content);
    const ResultRow last = row(end.row);
    content += last.content.substr(end.column);
    content += line_end_text(last.end);
    const bool lines_follow = end.row + 1 < end_row();
    if (lines_follow && !content.empty() && line_end_of(content) == LineEnd::none)
        content += line_end_text(neighbours_end(begin.row)); // an unresolved row had no end to keep
    do_step({splice_for_typing(begin.row, end.row, std::move(content))}, join_last_step);
    return behind;
}

/** Gives the rows from the first to the last one, whole, for typed lines. */
MergeResult::Splice MergeResult::splice_for_typing(std::size_t first_row, std::size_t last_row,
                                                   std::string content) const
{
    const bool has_first = first_row < end_row();
    const bool has_last = last_row < end_row();
    const Place first = has_first ? place_of(first_row) : Place{pieces.size(), 0};
    const Place last = has_last ? place_of(last_row) : Place{pieces.size(), 0};
    Splice splice{.at = first.piece};
    for (std::size_t index = first.piece; index < last.piece + (has_last ? 1 : 0); ++index)
        splice.removed.push_back(pieces[index]);
    if (has_first && first.line > pieces[first.piece].lines.begin) {
        splice.inserted.push_back(pieces[first.piece]);
        splice.inserted.back().lines.end = first.line;
    }
    if (!content.empty())
        splice.inserted.push_back(typed(row(first_row).region, std::move(content)));
    if (has_last && last.line + 1 < pieces[last.piece].lines.end) {
        splice.inserted.push_back(pieces[last.piece]);
        splice.inserted.back().lines.begin = last.line + 1;
    }
    return splice;
}
