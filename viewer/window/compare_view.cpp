#include "viewer/window/compare_view.h"

#include "viewer/window/text_finder.h"

#include <QFileInfo>
#include <QInputDialog>
#include <QLocale>
#include <QMenu>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

namespace
{

/** Differences that are found this soon are in the first picture. */
constexpr std::chrono::milliseconds short_comparison{6};

} // namespace

CompareView::CompareView(SharedStyle shared, QWidget* parent)
    : ViewerPage(parent),
      style(shared),
      strip(this),
      side(shared, this),
      find(this),
      job([this](ComparisonOutcome outcome) { take_comparison(std::move(outcome)); })
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(&strip);
    layout->addWidget(&side, 1);
    layout->addWidget(&find);
    side.on_caret_moved = [this](std::size_t) { tell_caret(); };
    side.on_zoom = [this](int steps) { on_options(with_font_growth(style->options, steps)); };
    side.on_context_menu = [this](std::size_t column, QPoint global) {
        show_context_menu(column, global);
    };
    find.on_find = [this](bool forward) { find_phrase(forward); };
    find.on_changed = [this] { mark_phrase(); };
    find.on_closed = [this] {
        mark_phrase();
        take_focus();
    };
}

void CompareView::show_contributors(Contributors all)
{
    contributors = std::move(all);
    strip.clear();
    side.show_contributors(contributors);
    mark_phrase();
    compare_again();
    job.wait(short_comparison);
}

void CompareView::compare_again()
{
    is_compared = false;
    job.cancel();
    if (contributors.empty())
        return;
    if (!all_shown(contributors)) {
        on_status(tr("Not compared"));
        return;
    }
    job.start(texts_of(contributors), style->options.compare);
    on_busy(true);
    on_status(tr("Comparing\u2026"));
}

void CompareView::cancel()
{
    job.cancel();
    on_busy(false);
    on_status(tr("Not compared"));
    strip.offer(tr("The comparison was cancelled."), tr("Compare"), [this] { compare_again(); });
}

void CompareView::take_comparison(ComparisonOutcome outcome)
{
    is_compared = true;
    side.show_comparison(std::move(outcome.comparison));
    on_busy(false);
    tell_likeness(outcome.likeness);
    tell_position();
}

void CompareView::tell_likeness(const Likeness& alike)
{
    if (const char* sentence = likeness_sentence(alike); sentence != nullptr)
        strip.tell(QCoreApplication::translate("Likeness", sentence));
    else if (side.rows().comparison().difference_count() == 0)
        strip.tell(tr("The contributors differ only in what is ignored."));
    else
        strip.clear();
}

void CompareView::tell_position()
{
    const std::size_t count = side.rows().comparison().difference_count();
    const QLocale locale;
    const QString all = locale.toString(static_cast<qulonglong>(count));
    const auto current = side.rows().current_difference();
    if (count == 0)
        on_status(tr("No differences"));
    else if (!current)
        on_status(tr("Differences: %1").arg(all));
    else
        on_status(tr("Difference %1 of %2")
                      .arg(locale.toString(static_cast<qulonglong>(*current + 1)), all));
}

void CompareView::tell_caret()
{
    TextColumn& text = side.column(side.active_column());
    if (text.source() == nullptr || text.source()->line_count() == 0)
        return;
    const TextPosition place = text.caret();
    const std::string_view before = text.source()->line(place.line).substr(0, place.byte);
    const auto column = QString::fromUtf8(before.data(), static_cast<qsizetype>(before.size()));
    on_place(
        tr("Line %1, column %2")
            .arg(QString::number(place.line + 1), QString::number(column.toUcs4().size() + 1)));
    const auto& rows = side.rows();
    const auto here =
        rows.comparison().difference_at(rows.comparison().row_of(side.active_column(), place.line));
    if (is_compared && here && here != rows.current_difference()) {
        side.rows().set_current(here);
        side.update_columns();
        tell_position();
    }
}

/** From where the next difference is looked for. */
std::size_t CompareView::row_at_hand() const
{
    const CompareRows& rows = side.rows();
    if (const auto current = rows.current_difference())
        return rows.comparison().difference(*current).first_row;
    return side.top_row();
}

void CompareView::go_to(std::optional<std::size_t> difference)
{
    if (!difference)
        return;
    side.go_to_difference(*difference);
    tell_position();
}

void CompareView::go_to_next()
{
    const CompareRows& rows = side.rows();
    if (!rows.current_difference()) // the one that is seen first
        if (const auto here = rows.comparison().difference_at(std::min(
                side.top_row(), std::max<std::size_t>(rows.comparison().row_count(), 1) - 1)))
            return go_to(here);
    go_to(rows.comparison().next_difference(row_at_hand()));
}

void CompareView::go_to_previous()
{
    go_to(side.rows().comparison().previous_difference(row_at_hand()));
}

void CompareView::go_to_first()
{
    if (side.rows().comparison().difference_count() > 0)
        go_to(0);
}

void CompareView::go_to_last()
{
    if (const std::size_t count = side.rows().comparison().difference_count(); count > 0)
        go_to(count - 1);
}

void CompareView::go_to_line(std::size_t number)
{
    const std::size_t column = side.active_column();
    const std::size_t count = side.column(column).source()->line_count();
    if (count == 0)
        return;
    const std::size_t line = std::min(std::max<std::size_t>(number, 1), count) - 1;
    side.select_in(column, {line, 0}, {line, 0});
    tell_caret();
    take_focus();
}

void CompareView::ask_for_line()
{
    auto* dialog = new QInputDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(tr("Go to Line"));
    dialog->setLabelText(tr("Line number:"));
    dialog->setInputMode(QInputDialog::IntInput);
    dialog->setIntRange(1, 2000000000);
    const TextColumn& text = side.column(side.active_column());
    dialog->setIntValue(static_cast<int>(text.caret().line) + 1);
    QObject::connect(dialog, &QInputDialog::intValueSelected, this,
                     [this](int number) { go_to_line(static_cast<std::size_t>(number)); });
    dialog->open();
}

void CompareView::mark_phrase()
{
    for (std::size_t index = 0; index < side.column_count(); ++index)
        side.column(index).set_phrase(find.isVisible() ? find.phrase() : QString(),
                                      find.match_case());
}

void CompareView::find_phrase(bool forward)
{
    if (find.phrase().isEmpty()) {
        find.ask({});
        return;
    }
    const TextColumn& text = side.column(side.active_column());
    const Phrase phrase{find.phrase().toStdString(), find.match_case(), find.wraps(), forward};
    const auto hit =
        find_in_columns(side.rows().contributors(), side.active_column(),
                        forward ? text.selection_end() : text.selection_begin(), phrase);
    find.tell(hit.has_value());
    if (!hit)
        return;
    side.select_in(hit->column, hit->begin, hit->end);
    tell_caret();
}

void CompareView::set_style(SharedStyle shared)
{
    const bool compares_otherwise = style->options.compare != shared->options.compare;
    style = std::move(shared);
    side.set_style(style);
    if (compares_otherwise && !contributors.empty())
        compare_again();
}

void CompareView::take_focus()
{
    if (side.column_count() > 0)
        side.column(side.active_column()).setFocus();
}

void CompareView::after_shown()
{
    was_shown = true;
    watch_files();
}

void CompareView::watch_files()
{
    watcher = std::make_unique<QFileSystemWatcher>();
    for (const Contributor& contributor : contributors)
        watcher->addPath(QString::fromLocal8Bit(contributor.path.c_str()));
    QObject::connect(watcher.get(), &QFileSystemWatcher::fileChanged, this,
                     [this](const QString& path) {
                         strip.offer(tr("%1 has changed on disk.").arg(QFileInfo(path).fileName()),
                                     tr("Reload"), [this] { reload(); });
                     });
}

void CompareView::reload()
{
    std::vector<std::string> paths;
    std::vector<std::string> names;
    for (const Contributor& contributor : contributors) {
        paths.push_back(contributor.path);
        names.push_back(contributor.name.toLocal8Bit().toStdString());
    }
    if (!paths.empty())
        show_contributors(read_contributors(paths, names, contributors.front().encoding));
    if (was_shown)
        watch_files();
}

void CompareView::swap_order()
{
    Contributors all = contributors;
    std::ranges::reverse(all);
    show_contributors(std::move(all));
}
