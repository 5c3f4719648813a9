// From files to a saved file, byte for byte, in every encoding with and without a mark, for every
// end of line, with and without one at the end of the file.
#include "tests/harness/scratch.h"
#include "viewer/core/merge_result.h"
#include "viewer/core/output_file.h"

#include <gtest/gtest.h>

namespace
{

/** Encoding, mark, end of all lines but the last, end of the last. */
using Form = std::tuple<int, bool, const char*, const char*>;

class SavedOutput : public testing::TestWithParam<Form>
{
  protected:
    /** The bytes of lines in the form. */
    static std::string file_of(std::initializer_list<std::string_view> lines)
    {
        const auto& [encoding, mark, end, last_end] = GetParam();
        std::string content;
        for (const std::string_view line : lines) {
            content += line;
            content += &line == lines.end() - 1 ? last_end : end;
        }
        return encode_text(content, encoding, mark);
    }

    std::shared_ptr<const Text> read(const char* name, const std::string& bytes) const
    {
        const int encoding = std::get<0>(GetParam());
        return std::make_shared<const Text>(
            std::get<Text>(read_text(scratch.write_file(name, bytes), encoding)));
    }

    Texts contributors(const std::string& ancestor, const std::string& first,
                       const std::string& second) const
    {
        return {read("ancestor", ancestor), read("first", first), read("second", second)};
    }

    std::string saved(const std::string& bytes) const
    {
        EXPECT_EQ(write_output(scratch / "first", bytes, 022), std::nullopt);
        return file_contents(scratch / "first");
    }

    const Scratch scratch;
};

TEST_P(SavedOutput, OfAMergeWithoutConflictsIsExact)
{
    const Texts texts = contributors(file_of({"\xc3\xa4", "b", "c", "\xf0\x9f\x99\x82"}),
                                     file_of({"\xc3\xa4", "B", "c", "\xf0\x9f\x99\x82"}),
                                     file_of({"\xc3\xa4", "b", "c", "\xe6\x96\x87"}));

    const auto merged = automatic_merge(texts, *plan_merge(texts, true));

    EXPECT_EQ(saved(merged.value()), file_of({"\xc3\xa4", "B", "c", "\xe6\x96\x87"}));
}

TEST_P(SavedOutput, OfAChosenContributorIsExact)
{
    const std::string second = file_of({"a", "\xf0\x9f\x99\x82", "c", "end"});
    const Texts texts =
        contributors(file_of({"a", "b", "c", "end"}), file_of({"a", "B", "c", "end"}), second);
    MergeResult result(texts, *plan_merge(texts, true));

    result.choose_for_unresolved(2);

    EXPECT_EQ(saved(result.bytes()), second);
}

TEST_P(SavedOutput, OfTypedLinesHasTheEndsOfTheOthers)
{
    const std::string file = file_of({"a", "b", "end"});
    const Texts texts = contributors(file, file, file);
    MergeResult result(texts, *plan_merge(texts, true));

    result.replace({1, 1}, {1, 1}, "\nnew\xc3\xa4\nlines");

    EXPECT_EQ(saved(result.bytes()), file_of({"a", "b", "new\xc3\xa4", "lines", "end"}));
}

TEST_P(SavedOutput, OfAnEditOfTheLastLineKeepsItsEnd)
{
    const std::string file = file_of({"a", "b", "end"});
    const Texts texts = contributors(file, file, file);
    MergeResult result(texts, *plan_merge(texts, true));

    result.replace({2, 0}, {2, 3}, "last");

    EXPECT_EQ(saved(result.bytes()), file_of({"a", "b", "last"}));
}

INSTANTIATE_TEST_SUITE_P(Of, SavedOutput,
                         testing::Combine(testing::Range(0, 5), testing::Bool(),
                                          testing::Values("\n", "\r\n", "\r"),
                                          testing::Values("", "\n", "\r\n", "\r")));

} // namespace
