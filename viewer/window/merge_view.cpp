#include "viewer/window/merge_view.h"

#include "viewer/core/output_file.h"
#include "viewer/window/merge_blocks.h"
#include "viewer/window/numbers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileInfo>
#include <QMessageBox>
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
      scrolling(side, pane),
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
    side.on_scrolled = [this] { scrolling.follow_contributors(); };
    pane.on_scrolled = [this] { scrolling.follow_result(); };
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

void MergeView::prepare_merge(Contributors unread, std::string output, mode_t file_mode_mask)
{
    output_path = std::move(output);
    mode_mask = file_mode_mask;
    has_ancestor = unread.size() > 2;
    announce(std::move(unread));
    name_columns();
    name_result();
}

void MergeView::show_read(Contributors all)
{
    contributors = std::move(all);
    is_read = true;
    name_result();
    strip.clear();
    side.show_contributors(contributors);
    name_columns();
    mark_phrase();
    plan_again();
}

void MergeView::wait_a_little()
{
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

void MergeView::name_result()
{
    const QString path = QString::fromLocal8Bit(output_path.c_str());
    const QString facts = contributors.empty() ? QString() : contributors.front().facts;
    pane.header().show_contributor(tr("Result: %1").arg(QFileInfo(path).fileName()), path,
                                   facts.section("  ", 0, 0));
}

void MergeView::plan_again()
{
    if (!is_read)
        return;
    job.cancel();
    on_busy(false);
    show_result(nullptr);
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
    show_result(std::make_unique<MergeResult>(texts, std::move(plan)));
    side.show_comparison(std::move(blocks));
    on_busy(false);
    if (const auto conflict = first_unresolved())
        go_to_region(*conflict);
    result_changed();
}

void MergeView::show_result(std::unique_ptr<MergeResult> merged)
{
    scrolling.set_result(merged.get());
    pane.show_result(merged.get());
    result = std::move(merged);
}

BlockLook MergeView::look(const Block& block, std::size_t contributor) const
{
    if (!result)
        return compare_look(block, contributor);
    return merge_look(*result, region_of(side.rows().comparison(), block), block, contributor);
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

void MergeView::set_ancestor(bool first_is_ancestor)
{
    if (first_is_ancestor == has_ancestor)
        return;
    with_consent([this, first_is_ancestor] {
        has_ancestor = first_is_ancestor;
        name_columns();
        plan_again();
    });
    update_entries(); // the switch is moved back until there is consent
}

void MergeView::with_consent(const std::function<void()>& action)
{
    if (!has_unsaved_work()) {
        action();
        return;
    }
    auto* box = new QMessageBox(QMessageBox::Question, window()->windowTitle(),
                                tr("The merge begins anew."),
                                QMessageBox::Discard | QMessageBox::Cancel, this);
    box->setInformativeText(tr("What was chosen and typed so far will be lost."));
    box->button(QMessageBox::Discard)->setText(tr("Begin &Anew"));
    box->button(QMessageBox::Cancel)->setText(tr("&Cancel"));
    box->setDefaultButton(QMessageBox::Cancel);
    box->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(box, &QMessageBox::finished, this, [this, action](int button) {
        if (button == QMessageBox::Discard)
            action();
        update_entries();
    });
    box->open();
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

void MergeView::set_style(SharedStyle shared)
{
    TextPage::set_style(std::move(shared));
    pane.set_style(style);
}
