#include "viewer/window/result_pane.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGridLayout>
#include <algorithm>

namespace
{

constexpr std::size_t rows_above = 3;

int as_int(std::size_t number)
{
    constexpr std::size_t most = 0x7fffff00;
    return static_cast<int>(std::min(number, most));
}

} // namespace

ResultPane::ResultPane(SharedStyle shared, QWidget* parent)
    : QWidget(parent),
      style(std::move(shared)),
      title(this),
      text(style, this),
      down(Qt::Vertical, this),
      across(Qt::Horizontal, this),
      overview(style, this)
{
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(&title, 0, 0, 1, 3);
    layout->addWidget(&text, 1, 0);
    layout->addWidget(&down, 1, 1);
    layout->addWidget(&overview, 1, 2);
    layout->addWidget(&across, 2, 0);
    layout->setRowStretch(1, 1);
    text.installEventFilter(this);
    text.setAccessibleName(QCoreApplication::translate("ResultPane", "Result"));
    QObject::connect(&down, &QScrollBar::valueChanged, this, [this] { scroll(); });
    QObject::connect(&across, &QScrollBar::valueChanged, this,
                     [this] { text.scroll_to(text.top_row(), across.value()); });
    overview.on_wanted = [this](std::size_t seen) {
        set_top(seen - std::min(seen, text.page_rows() / 2));
    };
    text.on_wheel = [this](int moved_rows, int pixels) {
        down.setValue(down.value() + moved_rows);
        across.setValue(across.value() + pixels);
    };
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
    set_top(0);
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
    const std::size_t count = rows ? rows->row_count() : 0;
    const std::size_t page = text.page_rows();
    down.setRange(0, as_int(count - std::min(count, page)));
    down.setPageStep(as_int(page));
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
    const int cell = static_cast<int>(style->metrics.cell());
    const int room = static_cast<int>(text.text_width());
    const auto top = static_cast<std::size_t>(down.value());
    const std::size_t count = rows && !style->options.wrap ? rows->row_count() : 0;
    for (std::size_t index = top; index < std::min(top + text.page_rows() + 1, count); ++index)
        widest = std::max(widest, LineShape(rows->row(index).text, style->metrics).width());
    const int most = static_cast<int>(widest) + 2 * cell - room;
    across.setRange(0, style->options.wrap ? 0 : std::max(most, 0));
    across.setPageStep(room);
    across.setSingleStep(cell * 4);
    across.setVisible(across.maximum() > 0);
}

void ResultPane::scroll()
{
    const auto top = static_cast<std::size_t>(down.value());
    update_width();
    text.scroll_to(top, across.value());
    overview.set_seen(top, text.page_rows());
    if (on_scrolled)
        on_scrolled();
}

void ResultPane::set_top(std::size_t seen)
{
    down.setValue(as_int(seen));
}

std::size_t ResultPane::top_row() const
{
    if (!rows || rows->row_count() == 0)
        return 0;
    const auto top = static_cast<std::size_t>(down.value());
    return rows->map().at(std::min(top, rows->row_count() - 1)).row;
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
        set_top(rows->row_of({row, 0}));
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
    const auto top = static_cast<std::size_t>(down.value());
    if (seen < top + 1 || seen + range.size() >= top + text.page_rows())
        set_top(seen - std::min(seen, rows_above));
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
    const auto top = static_cast<std::size_t>(down.value());
    const std::size_t page = text.page_rows();
    if (seen < top)
        set_top(seen);
    else if (seen >= top + page)
        set_top(seen - page + 1);
    const int x = text.rectangle_of(place).x();
    const int margin = static_cast<int>(style->metrics.cell() * 4);
    const int left = text.width() - static_cast<int>(text.text_width()) - text_inset;
    const int beyond = x < left ? x - left - margin : x - text.width() + margin;
    if (x < left || beyond > 0) {
        across.setValue(across.value() + beyond);
    }
}

bool ResultPane::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize && rows) {
        rows->set_wrap_width(text.text_width());
        update_ranges();
    }
    return QWidget::eventFilter(watched, event);
}
