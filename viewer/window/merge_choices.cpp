// What a user does with the region at hand of a merge.
#include "viewer/window/merge_view.h"

void MergeView::change_region(const std::function<void(std::size_t region)>& change)
{
    if (!result || !current || result->plan().regions[*current].kind == RegionKind::unchanged)
        return;
    change(*current);
    pane.result_changed();
    result_changed();
    pane.go_to_region(*current);
}

void MergeView::take(std::size_t contributor)
{
    if (contributor < contributors.size())
        change_region([&](std::size_t region) { result->choose(region, {contributor}); });
}

void MergeView::take_also(std::size_t contributor)
{
    if (contributor < contributors.size())
        change_region([&](std::size_t region) { result->choose_also(region, contributor); });
}

void MergeView::take_none()
{
    change_region([&](std::size_t region) { result->choose(region, {}); });
}

void MergeView::put_back()
{
    change_region([&](std::size_t region) { result->put_back(region); });
}

void MergeView::undo()
{
    if (!result || !result->can_undo())
        return;
    const std::size_t row = result->undo();
    pane.result_changed();
    pane.select({row, 0}, {row, 0});
    result_changed();
}

void MergeView::redo()
{
    if (!result || !result->can_redo())
        return;
    const std::size_t row = result->redo();
    pane.result_changed();
    pane.select({row, 0}, {row, 0});
    result_changed();
}
