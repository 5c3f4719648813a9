#include "viewer/window/merge_view.h"

#include "viewer/core/output_file.h"
#include "viewer/window/merge_blocks.h"
#include "viewer/window/numbers.h"

#include <QApplication>
#include <QFileInfo>
#include <QVBoxLayout>
#include <algorithm>

namespace
{

/** A merge that is planned this soon is in the first picture. */
constexpr std::chrono::milliseconds short_merge{6};

} // namespace

MergeView::MergeView(SharedStyle shared, QWidget* parent)
    : TextPage(std::move(shared), parent),
      halves(new QSplitter(Qt::Vertical, this)),
      pane(style),
      job([this](MergePlan plan) { take_plan(std::move(plan)); })
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(&strip);
    layout->addWidget(halves, 1);
    layout->addWidget(&find);
    halves->addWidget(&side);
    halves->addWidget(&pane);
    halves->setChildrenCollapsible(false);
    halves->setSizes({10000, 10000});
    side.rows().set_look(
        [this](const Block& block, std::size_t contributor) { return look(block, contributor); });
    side.on_scrolled = [this] { follow_contributors(); };
    pane.on_scrolled = [this] { follow_result(); };
    pane.on_edited = [this] { result_changed(); };
    pane.on_caret_moved = [this] { caret_moved(); };
    pane.on_zoom = side.on_zoom;
    pane.on_context_menu = [this](QPoint global) {
        auto* menu = new QMenu(this);
        menu->setAttribute(Qt::WA_DeleteOnClose);
        TextPage::fill_edit_menu(*menu);
        menu->popup(global);
    };
}

void MergeView::show_merge(Contributors all, std::string output, mode_t file_mode_mask)
{
    output_path = std::move(output);
    mode_mask = file_mode_mask;
    has_ancestor = all.size() > 2;
    const QString path = QString::fromLocal8Bit(output_path.c_str());
    pane.header().show_contributor(tr("Result: %1").arg(QFileInfo(path).fileName()), path,
                                   all.empty() ? QString() : all.front().facts.section("  ", 0, 0));
    show_read(std::move(all));
}

void MergeView::show_read(Contributors all)
{
    contributors = std::move(all);
    strip.clear();
    side.show_contributors(contributors);
    name_columns();
    mark_phrase();
    plan_again();
    job.wait(short_merge);
}

QString MergeView::numbered_name(std::size_t contributor) const
{
    const QString name = contributors[contributor].name;
    const QString ancestor =
        contributor == 0 && has_ancestor ? tr(" (common ancestor)") : QString();
    return QString::number(contributor + 1) + QStringLiteral(": ") + name + ancestor;
}

void MergeView::name_columns()
{
    for (std::size_t index = 0; index < contributors.size(); ++index)
        side.name_column(index, numbered_name(index), contributors[index]);
}

void MergeView::plan_again()
{
    job.cancel();
    pane.show_result(nullptr);
    result.reset();
    current.reset();
    pane.setVisible(all_shown(contributors));
    if (!all_shown(contributors)) {
        on_status(tr("Not merged"));
        if (std::ranges::any_of(contributors, &Contributor::is_directory))
            strip.tell(tr("Directories cannot be merged. Compare them, and merge file by file."));
        return;
    }
    on_busy(true);
    on_status(tr("Merging\u2026"));
    job.start([texts = texts_of(contributors), ancestor = has_ancestor](
                  const std::stop_token& stop) { return plan_merge(texts, ancestor, stop); });
}

void MergeView::cancel()
{
    job.cancel();
    on_busy(false);
    on_status(tr("Not merged"));
    strip.offer(tr("The merge was cancelled."), tr("Merge"), [this] { plan_again(); });
}

void MergeView::take_plan(MergePlan plan)
{
    const Texts texts = texts_of(contributors);
    Comparison blocks = blocks_of(plan, texts);
    result = std::make_unique<MergeResult>(texts, std::move(plan));
    pane.show_result(result.get());
    side.show_comparison(std::move(blocks));
    on_busy(false);
    if (const auto conflict = first_unresolved())
        go_to_region(*conflict);
    result_changed();
}

BlockLook MergeView::look(const Block& block, std::size_t contributor) const
{
    BlockLook look = compare_look(block, contributor);
    if (!result || look.tint == Tint::none)
        return look;
    const std::size_t region = region_of(side.rows().comparison(), block);
    const RegionChoice choice = result->choice(region);
    if (result->plan().regions[region].kind == RegionKind::conflict)
        look.tint = choice.resolved ? Tint::resolved : Tint::conflict;
    constexpr char16_t tick = 0x2713;
    if (choice.resolved &&
        std::ranges::find(choice.contributors, contributor) != choice.contributors.end())
        look.sign = QChar(tick);
    return look;
}

void MergeView::result_changed()
{
    side.update_marks();
    side.update_columns();
    update_entries();
    tell_state();
}

void MergeView::tell_state()
{
    if (!result)
        return;
    const std::size_t conflicts = result->conflict_count();
    const std::size_t resolved = result->resolved_count();
    if (conflicts == 0)
        on_status(tr("No conflicts: ready to save"));
    else if (resolved == conflicts)
        on_status(tr("All conflicts resolved (%1): ready to save").arg(grouped(conflicts)));
    else
        on_status(tr("%1 of %2 conflicts resolved").arg(grouped(resolved), grouped(conflicts)));
}

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
    is_following = true;
    const Comparison& blocks = side.rows().comparison();
    if (const auto difference = blocks.difference_at(blocks.blocks()[region].first_row))
        side.go_to_difference(*difference);
    pane.go_to_region(region);
    is_following = false;
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

void MergeView::set_ancestor(bool first_is_ancestor)
{
    has_ancestor = first_is_ancestor && contributors.size() > 2;
    name_columns();
    plan_again();
}

bool MergeView::can_save() const
{
    return result && result->is_resolved() && !is_saved;
}

void MergeView::save()
{
    if (!can_save())
        return;
    if (const auto reason = write_output(output_path, result->bytes(), mode_mask)) {
        strip.tell(tr("The output cannot be written: %1. Nothing is lost; it can be saved again.")
                       .arg(QString::fromLocal8Bit(reason->c_str())));
        return;
    }
    result->mark_saved();
    is_saved = true;
    on_close_wanted();
}

void MergeView::follow_contributors()
{
    const Comparison& blocks = side.rows().comparison();
    if (is_following || !result || blocks.row_count() == 0 || side.top_row() >= blocks.row_count())
        return;
    is_following = true;
    const Block& block = blocks.block_at(side.top_row());
    const LineRange range = result->rows_of(region_of(blocks, block));
    pane.go_to_row(range.begin + std::min(side.top_row() - block.first_row, range.size()));
    is_following = false;
}

void MergeView::follow_result()
{
    const Comparison& blocks = side.rows().comparison();
    if (is_following || !result || blocks.row_count() == 0 || result->row_count() == 0)
        return;
    is_following = true;
    const std::size_t region = result->region_at(pane.top_row());
    const Block& block = blocks.blocks()[region];
    const std::size_t down = pane.top_row() - result->rows_of(region).begin;
    side.scroll_to_row(block.first_row + std::min(down, block.row_count - 1));
    is_following = false;
}

std::vector<TextColumn*> MergeView::texts()
{
    auto all = TextPage::texts();
    all.push_back(&pane.editor());
    return all;
}

std::size_t MergeView::active_text() const
{
    const bool in_result = pane.isAncestorOf(QApplication::focusWidget());
    return in_result ? side.column_count() : side.active_column();
}

void MergeView::select_in(std::size_t text, TextPosition begin, TextPosition end)
{
    if (text < side.column_count())
        side.select_in(text, begin, end);
    else
        pane.select(begin, end);
    texts()[text]->setFocus();
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

void MergeView::set_style(SharedStyle shared)
{
    TextPage::set_style(std::move(shared));
    pane.set_style(style);
}
