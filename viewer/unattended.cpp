#include "viewer/unattended.h"

#include "viewer/core/merge.h"
#include "viewer/core/output_file.h"

#include <memory>
#include <stdexcept>
#include <variant>

namespace
{

std::string told(const std::string& path, const TextProblem& problem)
{
    if (!problem.is_malformed())
        return path + ": " + problem.what();
    return path + ": line " + std::to_string(problem.line) + ", offset " +
           std::to_string(problem.offset) + ": " + problem.what();
}

std::shared_ptr<const Text> read_contributor(const std::string& path, int encoding)
{
    TextOrProblem result = read_text(path, encoding);
    if (const auto* problem = std::get_if<TextProblem>(&result))
        throw std::runtime_error(told(path, *problem));
    return std::make_shared<const Text>(std::get<Text>(std::move(result)));
}

} // namespace

Texts read_contributors(const Request& request)
{
    Texts texts;
    texts.reserve(request.contributors.size());
    for (const std::string& path : request.contributors)
        texts.push_back(read_contributor(path, request.encoding));
    return texts;
}

void merge_unattended(const Request& request, mode_t file_mode_mask)
{
    constexpr std::size_t fewest_with_ancestor = 3;
    const Texts texts = read_contributors(request);
    if (!request.merge)
        throw std::runtime_error("no display to show a comparison on");
    const auto plan = plan_merge(texts, texts.size() >= fewest_with_ancestor);
    const std::size_t conflicts = plan->conflict_count();
    if (conflicts > 0)
        throw std::runtime_error("no display to resolve " + std::to_string(conflicts) +
                                 (conflicts == 1 ? " conflict on" : " conflicts on"));
    if (const auto problem =
            write_output(request.output, *automatic_merge(texts, *plan), file_mode_mask))
        throw std::runtime_error(request.output + ": " + *problem);
}
