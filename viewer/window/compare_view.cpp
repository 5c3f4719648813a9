#include "viewer/window/compare_view.h"

#include "viewer/window/actions.h"
#include "viewer/window/arrow_icon.h"
#include "viewer/window/numbers.h"

#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <utility>

namespace
{

/** Differences that are found this soon are in the first picture. */
constexpr std::chrono::milliseconds short_comparison{2};

/** What likeness_sentence says, named here for the translators. */
[[maybe_unused]] constexpr std::array likeness_sentences{
    QT_TRANSLATE_NOOP("Likeness", "The files are identical."),
    QT_TRANSLATE_NOOP("Likeness", "The files differ only in line ends and in the byte-order mark."),
    QT_TRANSLATE_NOOP("Likeness", "The files differ only in line ends."),
    QT_TRANSLATE_NOOP("Likeness", "The files differ only in the byte-order mark."),
    QT_TRANSLATE_NOOP("Likeness",
                      "The files differ only in encoding, line ends and byte-order mark."),
    QT_TRANSLATE_NOOP("Likeness", "The files differ only in encoding and line ends."),
    QT_TRANSLATE_NOOP("Likeness", "The files differ only in encoding and byte-order mark."),
    QT_TRANSLATE_NOOP("Likeness", "The files differ only in encoding.")};

} // namespace

CompareView::CompareView(SharedStyle shared, QWidget* parent)
    : TextPage(std::move(shared), parent),
      job([this](Outcome outcome) { take_comparison(std::move(outcome)); })
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(&strip);
    layout->addWidget(&side, 1);
    layout->addWidget(&find);
}

void CompareView::show_read(Contributors all)
{
    contributors = std::move(all);
    is_read = true;
    strip.clear();
    side.show_contributors(contributors);
    mark_phrase();
    compare_again();
}

void CompareView::wait_a_little()
{
    job.wait(short_comparison);
}

void CompareView::compare_again()
{
    is_compared = false;
    job.cancel();
    on_busy(false);
    if (!is_read || contributors.empty())
        return;
    if (!all_shown(contributors)) {
        on_status(tr("Not compared"));
        return;
    }
    on_busy(true);
    on_status(tr("Comparing\u2026"));
    job.start([texts = texts_of(contributors),
               options = style->options.compare](const std::stop_token& stop) {
        auto comparison = compare(texts, options, stop);
        return comparison ? std::optional(Outcome{std::move(*comparison), likeness(texts)})
                          : std::nullopt;
    });
}

void CompareView::cancel()
{
    job.cancel();
    on_busy(false);
    on_status(tr("Not compared"));
    strip.offer(tr("The comparison was cancelled."), tr("Compare"), [this] { compare_again(); });
}

void CompareView::take_comparison(Outcome outcome)
{
    is_compared = true;
    side.show_comparison(std::move(outcome.comparison));
    on_busy(false);
    tell_likeness(outcome.alike);
    tell_position();
    if (std::exchange(wants_next, false))
        go_to_next();
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
    const QString all = grouped(count);
    const auto current = side.rows().current_difference();
    if (count == 0)
        on_status(tr("No differences"));
    else if (!current)
        on_status(tr("Differences: %1").arg(all));
    else
        on_status(tr("Difference %1 of %2").arg(grouped(*current + 1), all));
}

void CompareView::caret_moved()
{
    TextPage::caret_moved();
    const std::size_t column = side.active_column();
    if (!is_compared || contributors[column].text->line_count() == 0)
        return;
    const Comparison& comparison = side.rows().comparison();
    const std::size_t row = comparison.row_of(column, side.column(column).caret().line);
    const auto here = comparison.difference_at(row);
    if (here && here != side.rows().current_difference()) {
        side.rows().set_current(here);
        side.update_columns();
        tell_position();
    }
}

void CompareView::go_to(std::optional<std::size_t> difference)
{
    if (!difference || *difference >= side.rows().comparison().difference_count())
        return;
    side.go_to_difference(*difference);
    tell_position();
}

void CompareView::go_to_next()
{
    wants_next = job.is_running() || !is_read; // what is seen may not be compared yet
    go_to(side.next_difference());
}

void CompareView::go_to_previous()
{
    go_to(side.previous_difference());
}

void CompareView::go_to_first()
{
    go_to(0);
}

void CompareView::go_to_last()
{
    go_to(side.rows().comparison().difference_count() - 1);
}

void CompareView::set_style(SharedStyle shared)
{
    const bool compares_otherwise = style->options.compare != shared->options.compare;
    TextPage::set_style(std::move(shared));
    if (compares_otherwise)
        compare_again();
}

void CompareView::swap_order()
{
    Contributors all = contributors;
    std::ranges::reverse(all);
    show_read(std::move(all));
    wait_a_little();
}

void CompareView::add_menus(QMenuBar& menus, QToolBar& tools)
{
    QMenu& file = *menus.addMenu(tr("&File"));
    add_reload_entry(file);
    add_entry(file, tr("S&wap Order"), {QKeySequence("Ctrl+Alt+S")}, [this] { swap_order(); });
    file.addSeparator();
    add_close_entry(file);
    fill_edit_menu(*menus.addMenu(tr("&Edit")));
    fill_view_menu(*menus.addMenu(tr("&View")));
    fill_difference_menu(*menus.addMenu(tr("&Differences")), tools);
    add_compare_options(*menus.addMenu(tr("&Ignore")), option_changes());
}

void CompareView::fill_difference_menu(QMenu& menu, QToolBar& tools)
{
    QAction* previous = add_entry(menu, tr("&Previous Difference"),
                                  {QKeySequence("F7"), QKeySequence("Alt+Up"), QKeySequence("P")},
                                  [this] { go_to_previous(); });
    QAction* next = add_entry(menu, tr("&Next Difference"),
                              {QKeySequence("F8"), QKeySequence("Alt+Down"), QKeySequence("N")},
                              [this] { go_to_next(); });
    QAction* first = add_entry(menu, tr("&First Difference"), {QKeySequence("Alt+Home")},
                               [this] { go_to_first(); });
    QAction* last = add_entry(menu, tr("&Last Difference"), {QKeySequence("Alt+End")},
                              [this] { go_to_last(); });
    const std::array entries{first, previous, next, last};
    constexpr std::array kinds{ArrowKind::top, ArrowKind::up, ArrowKind::down, ArrowKind::bottom};
    for (std::size_t index = 0; index < entries.size(); ++index) {
        entries.at(index)->setIcon(arrow_icon(kinds.at(index)));
        tools.addAction(entries.at(index));
    }
}
