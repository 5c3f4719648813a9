/*
 * One contributor's text: what its file holds, decoded strictly, so that encoding it again gives
 * the same bytes. The content is UTF-8 in one piece; every line knows its own end; a byte-order
 * mark is remembered, not part of the content. Nothing is guessed and nothing is replaced: bytes
 * that are no text in the named encoding are a TextProblem.
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

enum class LineEnd : std::uint8_t { none, lf, crlf, cr };

/** The characters of an end of line; empty for none. */
std::string_view line_end_text(LineEnd end);

/** The end that a line with its end has. */
LineEnd line_end_of(std::string_view whole_line);

/** Lines from `begin` up to, but not including, `end`; counted from 0. */
struct LineRange {
    std::size_t begin = 0;
    std::size_t end = 0;

    std::size_t size() const { return end - begin; }
    bool empty() const { return begin == end; }
    bool operator==(const LineRange&) const = default;
};

/** How many lines have each end. */
struct LineEndCounts {
    std::size_t none = 0;
    std::size_t lf = 0;
    std::size_t crlf = 0;
    std::size_t cr = 0;
};

/** Never changes once it is made, so threads may share it. A text that ends with an end of line has
    no empty line behind it: "a\n" is one line, "" is none. */
class Text
{
  public:
    /** The empty text in UTF-8. */
    Text() : Text(std::string(), 0, false) {}

    /** `encoding` is a row of encoding_types. `content` must be valid UTF-8 without the mark, and
        less than 4 gigabytes: what a file may have comes to 1.5. */
    Text(std::string content, int encoding, bool has_mark);

    int encoding() const { return encoding_row; }
    bool has_mark() const { return mark; }
    const std::string& content() const { return utf8; }

    std::size_t line_count() const { return starts.size() - 1; }

    /** The line without its end. */
    std::string_view line(std::size_t index) const;

    /** The line with its end. */
    std::string_view whole_line(std::size_t index) const { return lines({index, index + 1}); }
    LineEnd line_end(std::size_t index) const { return line_end_of(whole_line(index)); }

    /** Lines in one piece, with their ends. */
    std::string_view lines(LineRange range) const;

    /** Where in content() a line begins; for line_count() where the content ends. */
    std::size_t line_start(std::size_t index) const { return starts[index]; }

    /** The line that holds the byte at `offset` of content(); the last line for the content's end.
     */
    std::size_t line_at(std::size_t offset) const;

    /** Looks at all lines; not for every paint. */
    LineEndCounts line_ends() const;

  private:
    std::string utf8;
    std::vector<std::uint32_t> starts; // of each line, and the end of the last
    int encoding_row;
    bool mark;
};

/** Contributors in the order of the request; threads may share them. */
using Texts = std::vector<std::shared_ptr<const Text>>;

enum class TextFault : std::uint8_t {
    unreadable,         // see TextProblem::system_error
    is_directory,       //
    not_a_file,         // a FIFO, a socket, a device other than the null one
    not_a_character,    // bytes that never begin or continue a character
    truncated,          // the file ends, or another character begins, within one
    overlong,           // a longer form than the shortest one
    surrogate,          // half of a surrogate pair, encoded by itself, in UTF-8 or UTF-32
    unpaired_surrogate, // the same in UTF-16
    too_large,          // above 10FFFF
};

/** Why a file is no text. */
struct TextProblem {
    TextFault fault = TextFault::unreadable;
    int system_error = 0;     // unreadable: the errno
    std::uint64_t offset = 0; // malformed: of the first byte of the first bad sequence in the file
    std::size_t line = 0;     // malformed: the line that holds it, counted from 1

    /** Whether `offset` and `line` mean something. */
    bool is_malformed() const { return fault >= TextFault::not_a_character; }

    /** In English, without the path, the place and a full stop. */
    std::string what() const;
};

using TextOrProblem = std::variant<Text, TextProblem>;

/** Decodes the whole of a file. */
TextOrProblem decode_text(std::string bytes, int encoding);

/** Reads and decodes a file of up to a gigabyte. The null device is an empty one. Never waits for a
    FIFO. */
TextOrProblem read_text(const std::string& path, int encoding);

/** The whole lines of a file's beginning, whose last character may be cut short; of the only line,
    what is there. Nothing where there is a problem. */
std::optional<Text> decode_beginning(std::string bytes, int encoding);

/** The lines that the first 64 KiB of a file hold; nothing where there is a problem. */
std::optional<Text> read_beginning(const std::string& path, int encoding);

/** The bytes of valid UTF-8 in an encoding, after its mark where one is wanted. The inverse of
    decode_text. */
std::string encode_text(std::string_view content, int encoding, bool with_mark);
