#include "viewer/core/comparison.h"

namespace
{

/** Goes through the lines of both as long as they are the same but for their ends. */
void compare_lines(const Text& one, const Text& other, Likeness& likeness)
{
    if (one.content() == other.content())
        return;
    likeness.same_characters = likeness.same_characters && one.line_count() == other.line_count();
    for (std::size_t line = 0; line < one.line_count() && likeness.same_characters; ++line) {
        likeness.same_characters = one.line(line) == other.line(line);
        likeness.same_line_ends =
            likeness.same_line_ends && one.line_end(line) == other.line_end(line);
    }
}

} // namespace

Likeness likeness(const Texts& contributors)
{
    Likeness likeness;
    const Text& first = *contributors.front();
    for (std::size_t index = 1; index < contributors.size(); ++index) {
        const Text& other = *contributors[index];
        compare_lines(first, other, likeness);
        likeness.same_marks = likeness.same_marks && first.has_mark() == other.has_mark();
        likeness.same_encodings = likeness.same_encodings && first.encoding() == other.encoding();
    }
    return likeness;
}

const char* likeness_sentence(const Likeness& likeness)
{
    if (!likeness.same_characters)
        return nullptr;
    if (likeness.identical())
        return "The files are identical.";
    const bool ends = !likeness.same_line_ends;
    const bool marks = !likeness.same_marks;
    if (likeness.same_encodings) {
        if (ends && marks)
            return "The files differ only in line ends and in the byte-order mark.";
        return ends ? "The files differ only in line ends."
                    : "The files differ only in the byte-order mark.";
    }
    if (ends && marks)
        return "The files differ only in encoding, line ends and byte-order mark.";
    if (ends)
        return "The files differ only in encoding and line ends.";
    return marks ? "The files differ only in encoding and byte-order mark."
                 : "The files differ only in encoding.";
}
