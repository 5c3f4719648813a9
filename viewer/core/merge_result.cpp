#include "viewer/core/merge_result.h"

#include <algorithm>
#include <utility>

MergeResult::MergeResult(Texts contributors, MergePlan plan)
    : texts(std::move(contributors)), merge_plan(std::move(plan))
{
    if (merge_plan.regions.empty()) // all contributors are empty; there must be a place to type
        merge_plan.regions.push_back(
            {RegionKind::unchanged, 0, std::vector<LineRange>(texts.size())});
    std::vector<Piece> first;
    first.reserve(merge_plan.regions.size());
    for (std::size_t region = 0; region < merge_plan.regions.size(); ++region)
        first.push_back(initial(region));
    put(0, 0, first);
}

MergeResult::Piece MergeResult::contributed(std::size_t region, std::size_t contributor) const
{
    return {.region = region,
            .contributor = contributor,
            .text = texts[contributor],
            .lines = merge_plan.regions[region].lines[contributor]};
}

MergeResult::Piece MergeResult::typed(std::size_t region, std::string content)
{
    auto text = std::make_shared<const Text>(std::move(content), 0, false);
    const LineRange all = {0, text->line_count()};
    return {.region = region, .origin = RowOrigin::typed, .text = std::move(text), .lines = all};
}

MergeResult::Piece MergeResult::initial(std::size_t region) const
{
    const MergeRegion& planned = merge_plan.regions[region];
    if (planned.kind == RegionKind::conflict)
        return {.region = region, .origin = RowOrigin::unresolved};
    return contributed(region, planned.source);
}

LineRange MergeResult::pieces_of(std::size_t region) const
{
    const auto begin = std::ranges::lower_bound(pieces, region, {}, &Piece::region);
    const auto end = std::ranges::upper_bound(pieces, region, {}, &Piece::region);
    return {static_cast<std::size_t>(begin - pieces.begin()),
            static_cast<std::size_t>(end - pieces.begin())};
}

void MergeResult::put(std::size_t at, std::size_t count, const std::vector<Piece>& others)
{
    const auto place = pieces.begin() + static_cast<std::ptrdiff_t>(at);
    const auto behind = pieces.erase(place, place + static_cast<std::ptrdiff_t>(count));
    pieces.insert(behind, others.begin(), others.end());
    first_rows.resize(pieces.size() + 1);
    for (std::size_t piece = at; piece < pieces.size(); ++piece)
        first_rows[piece + 1] = first_rows[piece] + pieces[piece].row_count();
}

void MergeResult::do_step(std::vector<Splice> splices, bool join_last_step)
{
    for (const Splice& splice : splices)
        put(splice.at, splice.removed.size(), splice.inserted);
    undone.clear();
    if (!join_last_step || done.empty())
        done.emplace_back();
    done.back().id = ++last_id;
    std::ranges::move(splices, std::back_inserter(done.back().splices));
}

std::size_t MergeResult::undo()
{
    undone.push_back(std::move(done.back()));
    done.pop_back();
    const std::vector<Splice>& splices = undone.back().splices;
    for (std::size_t index = splices.size(); index-- > 0;)
        put(splices[index].at, splices[index].inserted.size(), splices[index].removed);
    return first_rows[splices.front().at];
}

std::size_t MergeResult::redo()
{
    done.push_back(std::move(undone.back()));
    undone.pop_back();
    const std::vector<Splice>& splices = done.back().splices;
    for (const Splice& splice : splices)
        put(splice.at, splice.removed.size(), splice.inserted);
    return first_rows[splices.front().at];
}

bool MergeResult::has_unsaved_work() const
{
    return state_id() != saved_id;
}

void MergeResult::mark_saved()
{
    saved_id = state_id();
}

RegionChoice MergeResult::choice(std::size_t region) const
{
    RegionChoice choice;
    const LineRange own = pieces_of(region);
    for (std::size_t index = own.begin; index < own.end; ++index) {
        const Piece& piece = pieces[index];
        if (piece.origin == RowOrigin::unresolved)
            return {.resolved = false, .typed = false, .contributors = {}};
        choice.contributors.push_back(piece.contributor);
        choice.typed = choice.typed || piece.origin == RowOrigin::typed ||
                       piece.lines != merge_plan.regions[region].lines[piece.contributor];
    }
    if (choice.typed)
        choice.contributors.clear();
    return choice;
}

void MergeResult::choose_pieces(std::size_t region, std::vector<Piece> chosen)
{
    const LineRange own = pieces_of(region);
    const auto begin = pieces.begin() + static_cast<std::ptrdiff_t>(own.begin);
    std::vector<Piece> removed(begin, begin + static_cast<std::ptrdiff_t>(own.size()));
    do_step({{own.begin, std::move(removed), std::move(chosen)}});
}

void MergeResult::choose(std::size_t region, const std::vector<std::size_t>& contributors)
{
    std::vector<Piece> chosen;
    chosen.reserve(contributors.size());
    for (const std::size_t contributor : contributors)
        chosen.push_back(contributed(region, contributor));
    if (chosen.empty())
        chosen.push_back(typed(region, {}));
    choose_pieces(region, std::move(chosen));
}

void MergeResult::choose_also(std::size_t region, std::size_t contributor)
{
    const LineRange own = pieces_of(region);
    std::vector<Piece> chosen;
    for (std::size_t index = own.begin; index < own.end; ++index)
        if (pieces[index].origin != RowOrigin::unresolved)
            chosen.push_back(pieces[index]);
    chosen.push_back(contributed(region, contributor));
    choose_pieces(region, std::move(chosen));
}

void MergeResult::choose_for_unresolved(std::size_t contributor)
{
    std::vector<Splice> splices;
    for (std::size_t index = 0; index < pieces.size(); ++index)
        if (pieces[index].origin == RowOrigin::unresolved)
            splices.push_back(
                {index, {pieces[index]}, {contributed(pieces[index].region, contributor)}});
    if (!splices.empty())
        do_step(std::move(splices));
}

void MergeResult::put_back(std::size_t region)
{
    choose_pieces(region, {initial(region)});
}

std::size_t MergeResult::conflict_count() const
{
    return merge_plan.conflict_count();
}

std::size_t MergeResult::resolved_count() const
{
    const auto unresolved = std::ranges::count(pieces, RowOrigin::unresolved, &Piece::origin);
    return conflict_count() - static_cast<std::size_t>(unresolved);
}

std::optional<std::size_t> MergeResult::next_unresolved(std::size_t row) const
{
    for (std::size_t index = 0; index < pieces.size(); ++index)
        if (pieces[index].origin == RowOrigin::unresolved && first_rows[index] > row)
            return pieces[index].region;
    return std::nullopt;
}

std::optional<std::size_t> MergeResult::previous_unresolved(std::size_t row) const
{
    for (std::size_t index = pieces.size(); index-- > 0;)
        if (pieces[index].origin == RowOrigin::unresolved && first_rows[index] < row)
            return pieces[index].region;
    return std::nullopt;
}
