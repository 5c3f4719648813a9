// Going from region to region of a merge: which one is at hand.
#include "viewer/window/merge_blocks.h"
#include "viewer/window/merge_view.h"

void MergeView::set_current(std::optional<std::size_t> region)
{
    current = region;
    const Comparison& blocks = side.rows().comparison();
    const bool differs = region && blocks.blocks()[*region].kind == BlockKind::different;
    side.rows().set_current(differs ? blocks.difference_at(blocks.blocks()[*region].first_row)
                                    : std::nullopt);
    pane.set_current(differs ? region : std::nullopt);
    side.update_columns();
    update_entries();
}

void MergeView::go_to_region(std::size_t region)
{
    scrolling.go_to_region(region);
    set_current(region);
}

/** The next region that is not unchanged. */
std::optional<std::size_t> MergeView::region_beside(bool forward) const
{
    const auto difference = forward ? side.next_difference() : side.previous_difference();
    if (!difference)
        return std::nullopt;
    const Comparison& blocks = side.rows().comparison();
    return region_of(blocks, blocks.difference(*difference));
}

void MergeView::go_to_next()
{
    if (const auto region = region_beside(true); region && result)
        go_to_region(*region);
}

void MergeView::go_to_previous()
{
    if (const auto region = region_beside(false); region && result)
        go_to_region(*region);
}

std::optional<std::size_t> MergeView::first_unresolved() const
{
    if (result->row_count() > 0 && result->row(0).origin == RowOrigin::unresolved)
        return result->region_at(0);
    return result->next_unresolved(0);
}

void MergeView::go_to_next_unresolved()
{
    if (!result || result->is_resolved())
        return;
    const auto next = result->next_unresolved(pane.editor().caret().line);
    go_to_region(next ? *next : *first_unresolved()); // behind the last comes the first
}

void MergeView::go_to_previous_unresolved()
{
    if (!result)
        return;
    if (const auto region = result->previous_unresolved(pane.editor().caret().line))
        go_to_region(*region);
}

void MergeView::caret_moved()
{
    TextPage::caret_moved();
    if (!result)
        return;
    const std::size_t text = active_text();
    if (text == side.column_count()) {
        set_current(pane.region_at_caret());
        return;
    }
    if (contributors[text].text->line_count() == 0)
        return;
    const Comparison& blocks = side.rows().comparison();
    const std::size_t row = blocks.row_of(text, side.column(text).caret().line);
    set_current(region_of(blocks, blocks.block_at(row)));
}
