#include "viewer/window/contributor.h"

#include "viewer/window/column_header.h"

#include <algorithm>
#include <filesystem>
#include <future>

namespace
{

const std::string& name_of(std::size_t index, const std::vector<std::string>& paths,
                           const std::vector<std::string>& names)
{
    return index < names.size() ? names[index] : paths[index];
}

Contributor read_contributor(const std::string& path, const std::string& name, int encoding)
{
    Contributor contributor{
        .path = path, .name = QString::fromLocal8Bit(name.c_str()), .encoding = encoding};
    TextOrProblem read = read_text(path, encoding);
    if (const auto* problem = std::get_if<TextProblem>(&read)) {
        contributor.problem = *problem;
        contributor.is_directory = problem->fault == TextFault::is_directory;
        contributor.text = std::make_shared<Text>(std::string(), encoding, false);
    } else {
        contributor.text = std::make_shared<Text>(std::move(std::get<Text>(read)));
        contributor.facts = describe(*contributor.text);
    }
    return contributor;
}

} // namespace

Contributors name_contributors(const std::vector<std::string>& paths,
                               const std::vector<std::string>& names, int encoding)
{
    const auto nothing = std::make_shared<const Text>(std::string(), encoding, false);
    Contributors contributors;
    contributors.reserve(paths.size());
    for (std::size_t index = 0; index < paths.size(); ++index) {
        std::error_code unknown; // which reading will tell
        contributors.push_back(
            {.path = paths[index],
             .name = QString::fromLocal8Bit(name_of(index, paths, names).c_str()),
             .encoding = encoding,
             .text = nothing,
             .is_directory = std::filesystem::is_directory(paths[index], unknown)});
    }
    return contributors;
}

std::optional<Contributors> read_beginnings(Contributors named)
{
    constexpr std::uintmax_t soon_read = 100'000; // bytes
    bool is_any_long = false;
    for (Contributor& contributor : named) {
        std::error_code unknown; // which reading will tell
        if (std::filesystem::file_size(contributor.path, unknown) <= soon_read || unknown)
            continue;
        if (auto beginning = read_beginning(contributor.path, contributor.encoding)) {
            contributor.text = std::make_shared<const Text>(*std::move(beginning));
            is_any_long = true;
        }
    }
    return is_any_long ? std::optional(std::move(named)) : std::nullopt;
}

Contributors read_contributors(const std::vector<std::string>& paths,
                               const std::vector<std::string>& names, int encoding)
{
    std::vector<std::future<Contributor>> readings;
    readings.reserve(paths.size());
    for (std::size_t index = 0; index < paths.size(); ++index) {
        const auto policy = index == 0 ? std::launch::deferred : std::launch::async;
        readings.push_back(std::async(policy, read_contributor, paths[index],
                                      name_of(index, paths, names), encoding));
    }
    Contributors contributors;
    contributors.reserve(paths.size());
    for (auto& reading : readings)
        contributors.push_back(reading.get());
    return contributors;
}

Texts texts_of(const Contributors& contributors)
{
    Texts texts;
    texts.reserve(contributors.size());
    for (const Contributor& contributor : contributors)
        texts.push_back(contributor.text);
    return texts;
}

bool all_shown(const Contributors& contributors)
{
    return std::ranges::none_of(contributors, [](const Contributor& contributor) {
        return contributor.problem.has_value();
    });
}
