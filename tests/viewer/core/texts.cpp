#include "tests/viewer/core/texts.h"

#include <algorithm>
#include <array>

std::shared_ptr<const Text> text_of(std::string_view content)
{
    return std::make_shared<const Text>(std::string(content), 0, false);
}

Texts texts_of(std::initializer_list<std::string_view> contents)
{
    Texts texts;
    for (const std::string_view content : contents)
        texts.push_back(text_of(content));
    return texts;
}

std::string TripleMaker::line()
{
    static constexpr std::array<const char*, 8> common = {"",   "}", "{", "    }",
                                                          "//", "a", "b", "x"};
    if (below(3) > 0)
        return common.at(below(common.size()));
    return "line " + std::to_string(below(50));
}

/** Deletes, inserts, replaces or repeats a few lines. */
void TripleMaker::edit(Lines& lines, std::size_t at)
{
    at = std::min(at, lines.size());
    const auto place = lines.begin() + static_cast<std::ptrdiff_t>(at);
    const std::size_t count = std::min(1 + below(4), lines.size() - at);
    const auto behind = place + static_cast<std::ptrdiff_t>(count);
    Lines added;
    switch (below(4)) {
    case 0:
        lines.erase(place, behind);
        return;
    case 1:
        added.assign(place, behind);
        break;
    case 2:
        lines.erase(place, behind);
        [[fallthrough]];
    default:
        added.resize(1 + below(3));
        std::ranges::generate(added, [&] { return line(); });
    }
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), added.begin(), added.end());
}

TripleMaker::Lines TripleMaker::edited(const Lines& ancestor,
                                       const std::vector<std::size_t>& places)
{
    Lines lines = ancestor;
    for (const std::size_t place : places)
        edit(lines, place);
    return lines;
}

std::string TripleMaker::joined_lines(const Lines& lines)
{
    std::string content;
    for (const std::string& one : lines) {
        content += one;
        content += '\n';
    }
    if (!content.empty() && below(6) == 0)
        content.pop_back();
    return content;
}

Triple TripleMaker::make()
{
    Lines ancestor(below(80));
    std::ranges::generate(ancestor, [&] { return line(); });
    std::vector<std::size_t> places(below(9));
    std::ranges::generate(places, [&] { return below(ancestor.size() + 1); });
    const Lines common = below(3) == 0 ? edited(ancestor, places) : ancestor;
    const Lines first = edited(common, places);
    if (below(2) == 0)
        std::ranges::for_each(places, [&](std::size_t& place) { place += below(6); });
    else
        std::ranges::generate(places, [&] { return below(ancestor.size() + 1); });
    const Lines second = edited(common, places);
    return {joined_lines(ancestor), joined_lines(first), joined_lines(second)};
}

std::string TripleMaker::next_version(const std::string& content)
{
    const auto text = text_of(content);
    Lines lines;
    for (std::size_t index = 0; index < text->line_count(); ++index)
        lines.emplace_back(text->line(index));
    std::vector<std::size_t> places(1 + below(4));
    std::ranges::generate(places, [&] { return below(lines.size() + 1); });
    return joined_lines(edited(lines, places));
}

namespace
{

std::string ended(std::string_view lines)
{
    std::string text(lines);
    if (!text.empty() && !text.ends_with('\n'))
        text += '\n';
    return text;
}

} // namespace

std::string with_markers(const Triple& triple, const MergePlan& plan)
{
    const Texts texts = triple.texts();
    std::string all;
    for (const MergeRegion& region : plan.regions) {
        const auto lines = [&](std::size_t index) {
            return texts[index]->lines(region.lines[index]);
        };
        if (region.kind == RegionKind::conflict)
            all += "<<<<<<< first\n" + ended(lines(1)) + "=======\n" + ended(lines(2)) +
                   ">>>>>>> second\n";
        else
            all += lines(region.source);
    }
    return all;
}
