/*
 * Texts compared, merged and edited. An input is an ancestor, two sides and typed text, with a byte
 * 0xff between each two; missing ones are empty. No line may be lost, whatever is chosen.
 */
#include "tests/fuzz/fuzzer.h"
#include "viewer/core/comparison.h"
#include "viewer/core/merge.h"
#include "viewer/core/merge_result.h"

#include <algorithm>
#include <string>

namespace
{

constexpr std::size_t text_count = 4;

/** Empty when there is a fault in one. */
Texts decoded(std::string_view input)
{
    Texts texts;
    for (std::size_t count = 0; count < text_count; ++count) {
        const std::size_t end = std::min(input.find('\xff'), input.size());
        TextOrProblem outcome = decode_text(std::string(input.substr(0, end)), 0);
        if (std::holds_alternative<TextProblem>(outcome))
            return {};
        texts.push_back(std::make_shared<const Text>(std::move(std::get<Text>(outcome))));
        input.remove_prefix(std::min(end + 1, input.size()));
    }
    return texts;
}

std::string bytes_of(const Text& text)
{
    return encode_text(text.content(), text.encoding(), text.has_mark());
}

void require_all_rows(const Texts& texts)
{
    const auto comparison = compare(texts, {});
    for (std::size_t index = 0; index < texts.size(); ++index) {
        std::size_t next = 0;
        for (std::size_t row = 0; row < comparison->row_count(); ++row)
            if (const auto line = comparison->line_at(row, index))
                require(*line == next++, "rows show lines in order");
        require(next == texts[index]->line_count(), "rows show all lines");
    }
}

/** Choosing one contributor everywhere gives its text. */
void require_every_contributor(const Texts& texts, bool first_is_ancestor)
{
    for (std::size_t index = 0; index < texts.size(); ++index) {
        MergeResult result(texts, *plan_merge(texts, first_is_ancestor));
        for (std::size_t region = 0; region < result.plan().regions.size(); ++region)
            result.choose(region, {index});
        require(result.is_resolved(), "what is chosen is resolved");
        require(result.text_between({0, 0}, {result.row_count() - 1,
                                             result.row(result.row_count() - 1).content.size()}) ==
                    texts[index]->content(),
                "the choice of one contributor is its text");
    }
}

std::optional<std::string> merged(const Texts& texts)
{
    return automatic_merge(texts, *plan_merge(texts, true));
}

void require_laws_of_merging(const Texts& texts)
{
    const std::shared_ptr<const Text>& a = texts[0];
    const std::shared_ptr<const Text>& b = texts[1];
    const std::shared_ptr<const Text>& c = texts[2];
    require(merged({a, a, b}) == bytes_of(*b), "one side alone has changes");
    require(merged({a, b, a}) == bytes_of(*b), "the other side alone has changes");
    require(merged({a, b, b}) == bytes_of(*b), "both sides have the same changes");
    require(merged({a, b, c}) == merged({a, c, b}), "the sides may change places");
}

void require_undo(const Texts& texts, const std::string& typed)
{
    MergeResult result(texts, *plan_merge(texts, true));
    const std::string before = result.bytes();
    const std::size_t row = typed.size() % result.row_count();
    const ResultPosition behind = result.replace({row, 0}, {result.row_count() - 1, 0}, typed);
    require(behind.row < result.row_count(), "the place behind the typed text is in the result");
    const std::string after = result.bytes();
    if (!result.can_undo())
        return;
    result.undo();
    require(result.bytes() == before, "undo gives what was there before");
    result.redo();
    require(result.bytes() == after, "redo gives it again");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Texts texts = decoded(text_of(data, size));
    if (texts.empty())
        return 0;
    const std::string typed = texts.back()->content();
    texts.pop_back();
    require_all_rows(texts);
    require_every_contributor(texts, true);
    require_every_contributor(texts, false);
    require_laws_of_merging(texts);
    require_undo(texts, typed);
    return 0;
}
