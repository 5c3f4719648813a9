#include "viewer/window/result_pane.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGridLayout>
#include <algorithm>

namespace
{

constexpr std::size_t rows_above = 3;

} // namespace

ResultPane::ResultPane(SharedStyle shared, QWidget* parent)
    : QWidget(parent),
      style(std::move(shared)),
      title(this),
      text(style, this),
      bars(this),
      overview(style, this)
{
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(&title, 0, 0, 1, 3);
    layout->addWidget(&text, 1, 0);
    layout->addWidget(&bars.down(), 1, 1);
    layout->addWidget(&overview, 1, 2);
    layout->addWidget(&bars.across(), 2, 0);
    layout->setRowStretch(1, 1);
    text.installEventFilter(this);
    text.setAccessibleName(QCoreApplication::translate("ResultPane", "Result"));
    QObject::connect(&bars.down(), &QScrollBar::valueChanged, this, [this] { scroll(); });
    QObject::connect(&bars.across(), &QScrollBar::valueChanged, this,
                     [this] { text.scroll_to(text.top_row(), bars.left()); });
    overview.on_wanted = [this](std::size_t seen) {
        bars.set_top(seen - std::min(seen, text.page_rows() / 2));
    };
    text.on_wheel = [this](int moved_rows, int pixels) { bars.move_by(moved_rows, pixels); };
    text.on_edited = [this] {
        result_changed();
        on_edited();
    };
    text.on_caret_moved = [this] {
        reveal(text.caret());
        on_caret_moved();
    };
    text.on_zoom = [this](int steps) { on_zoom(steps); };
    text.on_context_menu = [this](QPoint global) { on_context_menu(global); };
}

void ResultPane::set_style(SharedStyle shared)
{
    style = std::move(shared);
    widest = 0;
    text.set_style(style);
    overview.set_style(style);
    if (rows)
        rows->set_style(style);
    result_changed();
}

void ResultPane::show_result(MergeResult* merged)
{
    result = merged;
    text.set_source(nullptr);
    widest = 0;
    rows = merged != nullptr ? std::make_unique<ResultRows>(*merged) : nullptr;
    if (rows) {
        rows->set_style(style);
        rows->set_wrap_width(text.text_width());
    }
    text.edit(merged);
    text.set_source(rows.get());
    result_changed();
    bars.set_top(0);
}

void ResultPane::result_changed()
{
    if (rows)
        rows->lay_out();
    text.rows_changed();
    update_ranges();
    update_marks();
}

void ResultPane::set_current(std::optional<std::size_t> region)
{
    if (rows)
        rows->set_current(region);
    text.update();
}

void ResultPane::update_ranges()
{
    bars.set_rows(rows ? rows->row_count() : 0, text.page_rows());
    scroll();
}

void ResultPane::update_marks()
{
    std::vector<OverviewMark> marks;
    if (rows) {
        const auto& regions = result->plan().regions;
        for (std::size_t region = 0; region < regions.size(); ++region) {
            if (regions[region].kind == RegionKind::unchanged)
                continue;
            const LineRange range = result->rows_of(region);
            const std::size_t begin = range.begin < rows->line_count()
                                          ? rows->row_of({range.begin, 0})
                                          : rows->row_count();
            marks.push_back({begin, range.size(), result_tint(*result, region)});
        }
    }
    overview.set_marks(std::move(marks), rows ? rows->row_count() : 0);
}

/** Across, there is as much to scroll as the rows that are seen, and were seen, need. */
void ResultPane::update_width()
{
    const std::size_t count = rows && !style->options.wrap ? rows->row_count() : 0;
    const std::size_t behind = std::min(bars.top() + text.page_rows() + 1, count);
    for (std::size_t index = bars.top(); index < behind; ++index)
        widest = std::max(widest, LineShape(rows->row(index).text, style->metrics).width());
    bars.set_width(widest, text, *style);
}

void ResultPane::scroll()
{
    const std::size_t top = bars.top();
    update_width();
    text.scroll_to(top, bars.left());
    overview.set_seen(top, text.page_rows());
    if (on_scrolled)
        on_scrolled();
}

std::size_t ResultPane::top_row() const
{
    if (!rows || rows->row_count() == 0)
        return 0;
    return rows->map().at(std::min(bars.top(), rows->row_count() - 1)).row;
}

std::optional<std::size_t> ResultPane::region_at_caret() const
{
    if (!rows || rows->line_count() == 0)
        return std::nullopt;
    return result->region_at(std::min(text.caret().line, rows->line_count() - 1));
}

void ResultPane::go_to_row(std::size_t row)
{
    if (rows && row < rows->line_count())
        bars.set_top(rows->row_of({row, 0}));
}

void ResultPane::go_to_region(std::size_t region)
{
    if (!rows)
        return;
    const LineRange range = result->rows_of(region);
    const TextPosition begin{range.begin, 0};
    text.select(begin, begin);
    text.rows_changed(); // a region without rows may be behind the last one
    set_current(region);
    const std::size_t seen = rows->row_of(begin);
    const std::size_t top = bars.top();
    if (seen < top + 1 || seen + range.size() >= top + text.page_rows())
        bars.set_top(seen - std::min(seen, rows_above));
}

void ResultPane::select(TextPosition begin, TextPosition end)
{
    text.select(begin, end);
    reveal(begin);
    reveal(end);
}

void ResultPane::reveal(TextPosition place)
{
    if (!rows || rows->row_count() == 0)
        return;
    const std::size_t seen = rows->row_of(place);
    const std::size_t top = bars.top();
    const std::size_t page = text.page_rows();
    if (seen < top)
        bars.set_top(seen);
    else if (seen >= top + page)
        bars.set_top(seen - page + 1);
    bars.reveal_across(text, place, style->metrics);
}

bool ResultPane::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize && rows) {
        rows->set_wrap_width(text.text_width());
        update_ranges();
    }
    return QWidget::eventFilter(watched, event);
}
