#include "viewer/core/text.h"

#include "viewer/core/encoding.h"

#include <algorithm>
#include <cstring>

namespace
{

constexpr std::string_view mark_in_utf8 = "\xef\xbb\xbf";

std::size_t count_lf(std::string_view content)
{
    constexpr std::size_t block = 128; // a fixed number, so that the inner loop is vectorised
    std::size_t count = 0;
    for (; content.size() >= block; content.remove_prefix(block)) {
        unsigned char in_block = 0;
        for (std::size_t index = 0; index < block; ++index)
            in_block += static_cast<unsigned char>(content[index] == '\n');
        count += in_block;
    }
    return count + static_cast<std::size_t>(std::ranges::count(content, '\n'));
}

/** The beginnings of all lines, and the end of the last. */
std::vector<std::uint32_t> line_starts(std::string_view content)
{
    const auto find_lf = [&](std::size_t from) {
        return std::min(content.find('\n', from), content.size());
    };
    const bool has_cr = content.find('\r') != std::string_view::npos;
    std::vector<std::uint32_t> starts;
    starts.reserve(count_lf(content) + 2);
    std::size_t lf = find_lf(0); // the nearest: not looked for again from each line of another end
    for (std::size_t start = 0; start < content.size();) {
        starts.push_back(static_cast<std::uint32_t>(start));
        if (lf < start)
            lf = find_lf(start);
        const std::size_t cr =
            has_cr ? std::min(content.substr(start, lf - start).find('\r'), lf - start)
                   : lf - start;
        const bool ends_with_cr = start + cr + 1 < lf;
        start = ends_with_cr ? start + cr + 1 : std::min(lf + 1, content.size());
    }
    starts.push_back(static_cast<std::uint32_t>(content.size()));
    return starts;
}

std::string without_mark(std::string content)
{
    content.erase(0, mark_in_utf8.size());
    return content;
}

/** The text of what a file holds, in UTF-8. */
Text text_of(std::string content, int encoding)
{
    const bool has_mark = content.starts_with(mark_in_utf8);
    return {has_mark ? without_mark(std::move(content)) : std::move(content), encoding, has_mark};
}

/** The line that the end of `content` is in, counted from 1. */
std::size_t last_line(const Text& before)
{
    const std::size_t count = before.line_count();
    const bool ended = count == 0 || before.line_end(count - 1) != LineEnd::none;
    return ended ? count + 1 : count;
}

} // namespace

std::string_view line_end_text(LineEnd end)
{
    switch (end) {
    case LineEnd::lf:
        return "\n";
    case LineEnd::crlf:
        return "\r\n";
    case LineEnd::cr:
        return "\r";
    case LineEnd::none:
        break;
    }
    return {};
}

LineEnd line_end_of(std::string_view whole_line)
{
    if (whole_line.ends_with("\r\n"))
        return LineEnd::crlf;
    if (whole_line.ends_with('\n'))
        return LineEnd::lf;
    return whole_line.ends_with('\r') ? LineEnd::cr : LineEnd::none;
}

Text::Text(std::string content, int encoding, bool has_mark)
    : utf8(std::move(content)), starts(line_starts(utf8)), encoding_row(encoding), mark(has_mark)
{
}

std::string_view Text::line(std::size_t index) const
{
    std::string_view line = whole_line(index);
    line.remove_suffix(line_end_text(line_end_of(line)).size());
    return line;
}

std::string_view Text::lines(LineRange range) const
{
    const std::size_t begin = starts[range.begin];
    return std::string_view(utf8).substr(begin, starts[range.end] - begin);
}

std::size_t Text::line_at(std::size_t offset) const
{
    const auto behind = std::upper_bound(starts.begin(), starts.end() - 1, offset);
    return behind == starts.begin() ? 0 : static_cast<std::size_t>(behind - starts.begin() - 1);
}

LineEndCounts Text::line_ends() const
{
    LineEndCounts counts;
    for (std::size_t index = 0; index < line_count(); ++index) {
        switch (line_end(index)) {
        case LineEnd::lf:
            ++counts.lf;
            break;
        case LineEnd::crlf:
            ++counts.crlf;
            break;
        case LineEnd::cr:
            ++counts.cr;
            break;
        case LineEnd::none:
            ++counts.none;
            break;
        }
    }
    return counts;
}

std::string TextProblem::what() const
{
    switch (fault) {
    case TextFault::unreadable:
        return std::strerror(system_error);
    case TextFault::is_directory:
        return "a directory, not a file";
    case TextFault::not_a_file:
        return "neither a file nor a directory";
    case TextFault::not_a_character:
        return "bytes that are no character";
    case TextFault::truncated:
        return "a character that is cut short";
    case TextFault::overlong:
        return "a character in a longer form than it has";
    case TextFault::surrogate:
        return "a surrogate, which is no character";
    case TextFault::unpaired_surrogate:
        return "a surrogate without its other half";
    case TextFault::too_large:
        break;
    }
    return "a value above 10FFFF, which is no character";
}

TextOrProblem decode_text(std::string bytes, int encoding)
{
    Decoded decoded = to_utf8(std::move(bytes), encoding);
    if (decoded.bad) {
        const Text before(std::move(decoded.content), encoding, false);
        return TextProblem{
            .fault = decoded.bad->fault, .offset = decoded.bad->offset, .line = last_line(before)};
    }
    return text_of(std::move(decoded.content), encoding);
}

std::optional<Text> decode_beginning(std::string bytes, int encoding)
{
    constexpr std::size_t longest_character = 4;
    const std::size_t size = bytes.size();
    Decoded decoded = to_utf8(std::move(bytes), encoding);
    if (decoded.bad && decoded.bad->offset + longest_character <= size)
        return std::nullopt;
    if (const std::size_t last = decoded.content.rfind('\n'); last != std::string::npos)
        decoded.content.resize(last + 1);
    return text_of(std::move(decoded.content), encoding);
}

std::string encode_text(std::string_view content, int encoding, bool with_mark)
{
    std::string bytes;
    if (with_mark)
        bytes = from_utf8(mark_in_utf8, encoding);
    bytes += from_utf8(content, encoding);
    return bytes;
}
