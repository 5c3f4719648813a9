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
    count_rows(0);
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
    const std::size_t in_place = std::min(count, others.size());
    const auto rest = others.begin() + static_cast<std::ptrdiff_t>(in_place);
    const auto next = std::copy(others.begin(), rest, place);
    pieces.insert(pieces.erase(next, place + static_cast<std::ptrdiff_t>(count)), rest,
                  others.end());
}

void MergeResult::count_rows(std::size_t from)
{
    first_rows.resize(pieces.size() + 1);
    for (std::size_t piece = from; piece < pieces.size(); ++piece)
        first_rows[piece + 1] = first_rows[piece] + pieces[piece].row_count();
}

/** Applies splices, or takes them back; the first row that changed. */
std::size_t MergeResult::apply(const std::vector<Splice>& splices, bool back)
{
    std::size_t first = pieces.size();
    for (std::size_t index = 0; index < splices.size(); ++index) {
        const Splice& splice = splices[back ? splices.size() - 1 - index : index];
        const std::vector<Piece>& old = back ? splice.inserted : splice.removed;
        put(splice.at, old.size(), back ? splice.removed : splice.inserted);
        first = std::min(first, splice.at);
    }
    count_rows(first);
    return first_rows[first];
}

void MergeResult::do_step(std::vector<Splice> splices, bool join_last_step)
{
    apply(splices, false);
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
    return apply(undone.back().splices, true);
}

std::size_t MergeResult::redo()
{
    done.push_back(std::move(undone.back()));
    undone.pop_back();
    return apply(done.back().splices, false);
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
