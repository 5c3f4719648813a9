/*
 * Bytes as text. The first byte of an input chooses the encoding, the rest is the file. What is
 * text must come back byte for byte, with all of it in lines; what is none must be text up to the
 * place that is told.
 */
#include "cmdline/encodings.h"
#include "tests/fuzz/fuzzer.h"
#include "viewer/core/text.h"

#include <string>

namespace
{

void require_lines(const Text& text)
{
    std::string lines;
    for (std::size_t line = 0; line < text.line_count(); ++line) {
        require(text.line_at(text.line_start(line)) == line, "a line's beginning is in the line");
        require(text.line(line).find_first_of("\r\n") == std::string_view::npos,
                "an end of line ends a line");
        lines += text.line(line);
        lines += line_end_text(text.line_end(line));
    }
    require(lines == text.content(), "the lines are the text");
    require(text.line_ends().none <= 1, "only the last line may lack its end");
}

void require_first_fault(const std::string& bytes, int encoding, const TextProblem& problem)
{
    require(problem.is_malformed(), "bytes have no other problem");
    require(problem.offset < bytes.size(), "the fault is in the file");
    const TextOrProblem before = decode_text(bytes.substr(0, problem.offset), encoding);
    require(std::holds_alternative<Text>(before), "all before the fault is text");
    require(problem.line <= std::get<Text>(before).line_count() + 1, "the line is in the file");
    require(problem.line >= std::get<Text>(before).line_count(), "the line is the last one");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const int encoding = *data % (encoding_rows - 1);
    const std::string bytes(text_of(data + 1, size - 1));
    const TextOrProblem outcome = decode_text(bytes, encoding);
    if (const auto* problem = std::get_if<TextProblem>(&outcome)) {
        require_first_fault(bytes, encoding, *problem);
        return 0;
    }
    const Text& text = std::get<Text>(outcome);
    require(encode_text(text.content(), text.encoding(), text.has_mark()) == bytes,
            "the bytes come back");
    require_lines(text);
    return 0;
}
