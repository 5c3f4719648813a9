#include "viewer/window/side_by_side.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGridLayout>
#include <QTimer>
#include <algorithm>
#include <cstring>

namespace
{

constexpr std::size_t rows_above = 4; // shown above a difference that was gone to

int as_int(std::size_t number)
{
    constexpr std::size_t most = 0x7fffff00;
    return static_cast<int>(std::min(number, most));
}

/** The width of the widest line, at least `widest`. */
qreal widest_line(const Text& text, const GlyphMetrics& metrics, qreal widest)
{
    for (std::size_t index = 0; index < text.line_count(); ++index) {
        const std::string_view line = text.line(index);
        const bool is_short = static_cast<qreal>(line.size()) * metrics.cell() <= widest &&
                              line.find('\t') == std::string_view::npos;
        if (!is_short)
            widest = std::max(widest, LineShape(line, metrics).width());
    }
    return widest;
}

} // namespace

SideBySide::SideBySide(SharedStyle shared, QWidget* parent)
    : QWidget(parent),
      style(std::move(shared)),
      splitter(Qt::Horizontal, this),
      down(Qt::Vertical, this),
      across(Qt::Horizontal, this),
      overview(style, this)
{
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(&splitter, 0, 0);
    layout->addWidget(&down, 0, 1);
    layout->addWidget(&overview, 0, 2);
    layout->addWidget(&across, 1, 0);
    layout->setRowStretch(0, 1);
    splitter.setChildrenCollapsible(false);
    splitter.setHandleWidth(3);
    down.setFocusPolicy(Qt::NoFocus);
    across.setFocusPolicy(Qt::NoFocus);
    down.setAccessibleName(QCoreApplication::translate("SideBySide", "Rows"));
    across.setAccessibleName(QCoreApplication::translate("SideBySide", "Columns of characters"));
    QObject::connect(&down, &QScrollBar::valueChanged, this, [this] { scroll_columns(); });
    QObject::connect(&across, &QScrollBar::valueChanged, this, [this] { scroll_columns(); });
    QObject::connect(&splitter, &QSplitter::splitterMoved, this, [this] { update_wrapping(); });
    overview.on_wanted = [this](std::size_t seen) {
        set_top(seen - std::min(seen, page_rows() / 2));
    };
    all.set_style(style);
    set_box_count(2);
}

void SideBySide::set_box_count(std::size_t count)
{
    while (boxes.size() > count) {
        delete boxes.back();
        boxes.pop_back();
    }
    while (boxes.size() < count) {
        boxes.push_back(new ContributorBox(style));
        splitter.addWidget(boxes.back());
        splitter.setStretchFactor(as_int(boxes.size()) - 1, 1);
        connect_box(boxes.size() - 1);
    }
    splitter.setSizes(QList<int>(as_int(count), 10000));
}

void SideBySide::connect_box(std::size_t index)
{
    TextColumn& text = boxes[index]->column();
    text.installEventFilter(this);
    text.on_wheel = [this](int moved_rows, int pixels) {
        down.setValue(down.value() + moved_rows);
        across.setValue(across.value() + pixels);
    };
    text.on_zoom = [this](int steps) {
        if (on_zoom)
            on_zoom(steps);
    };
    text.on_caret_moved = [this, index] {
        active = index;
        reveal(index, column(index).caret());
        if (on_caret_moved)
            on_caret_moved(index);
    };
    text.on_fold_clicked = [this](std::size_t seen) {
        all.open_fold(seen);
        lay_out_again();
    };
    text.on_context_menu = [this, index](QPoint global) {
        active = index;
        if (on_context_menu)
            on_context_menu(index, global);
    };
}

bool SideBySide::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize && !laying_out)
        update_wrapping();
    if (event->type() == QEvent::FocusIn)
        for (std::size_t index = 0; index < boxes.size(); ++index)
            if (&column(index) == watched)
                active = index;
    return QWidget::eventFilter(watched, event);
}

void SideBySide::set_style(SharedStyle shared)
{
    const std::size_t row = top_row();
    style = std::move(shared);
    widest = 0;
    all.set_style(style);
    overview.set_style(style);
    for (ContributorBox* box : boxes)
        box->column().set_style(style);
    update_wrapping();
    lay_out_again();
    set_top(all.map().count() == 0 ? 0 : all.map().seen_at(row));
    QTimer::singleShot(0, this, [this] { measure_widths(); });
}

void SideBySide::show_contributors(const Contributors& contributors)
{
    for (ContributorBox* box : boxes)
        box->column().set_source(nullptr);
    sources.clear();
    set_box_count(std::max<std::size_t>(contributors.size(), 2));
    const Texts texts = texts_of(contributors);
    all.show(texts, texts.empty() ? Comparison() : Comparison::before_comparing(texts));
    for (std::size_t index = 0; index < contributors.size(); ++index) {
        sources.push_back(std::make_unique<CompareColumn>(all, index));
        boxes[index]->show_contributor(contributors[index], sources.back().get());
    }
    active = 0;
    widest = 0;
    down.setValue(0);
    across.setValue(0);
    update_wrapping();
    lay_out_again();
    QTimer::singleShot(0, this, [this] { measure_widths(); });
}

void SideBySide::show_comparison(Comparison comparison)
{
    const bool has_rows = all.map().count() > 0 && !all.contributors().empty();
    const auto line = has_rows ? all.comparison().line_at(top_row(), 0) : std::nullopt;
    const bool at_top = down.value() == 0;
    all.show(all.contributors(), std::move(comparison));
    lay_out_again();
    if (line && !at_top)
        set_top(all.map().seen_at(all.comparison().row_of(0, *line)));
}

std::size_t SideBySide::top_row() const
{
    const std::size_t count = all.map().count();
    if (count == 0)
        return 0;
    return all.map().at(std::min(static_cast<std::size_t>(down.value()), count - 1)).row;
}

std::size_t SideBySide::page_rows() const
{
    return boxes.front()->column().page_rows();
}

void SideBySide::lay_out_again()
{
    for (ContributorBox* box : boxes)
        box->column().rows_changed();
    update_ranges();
    update_marks();
    scroll_columns();
}

void SideBySide::update_ranges()
{
    const std::size_t count = all.map().count();
    const std::size_t page = page_rows();
    down.setRange(0, as_int(count - std::min(count, page)));
    down.setPageStep(as_int(page));
    const int room = static_cast<int>(boxes.front()->column().text_width());
    const int width = static_cast<int>(widest) + 2 * static_cast<int>(style->metrics.cell());
    across.setRange(0, style->options.wrap ? 0 : std::max(width - room, 0));
    across.setPageStep(room);
    across.setSingleStep(static_cast<int>(style->metrics.cell() * 4));
    across.setVisible(!style->options.wrap && across.maximum() > 0);
}

void SideBySide::update_wrapping()
{
    laying_out = true;
    std::vector<qreal> widths;
    for (std::size_t index = 0; index < sources.size(); ++index)
        widths.push_back(column(index).text_width());
    if (style->options.wrap && !sources.empty()) {
        const std::size_t row = top_row();
        all.set_wrap_widths(std::move(widths));
        lay_out_again();
        if (all.map().count() > 0)
            set_top(all.map().seen_at(row));
    } else {
        update_ranges();
        scroll_columns();
    }
    laying_out = false;
}

void SideBySide::update_marks()
{
    std::vector<OverviewMark> marks;
    for (std::size_t index = 0; index < all.comparison().difference_count(); ++index) {
        const Block& block = all.comparison().difference(index);
        const std::size_t seen = all.map().seen_at(block.first_row);
        Tint tint = Tint::none;
        for (std::size_t contributor = 0; contributor < sources.size(); ++contributor)
            tint = std::max(tint, all.look(block, contributor).tint);
        marks.push_back({seen, block.row_count, tint});
    }
    overview.set_marks(std::move(marks), all.map().count());
}

void SideBySide::scroll_columns()
{
    const auto top = static_cast<std::size_t>(down.value());
    for (ContributorBox* box : boxes)
        box->column().scroll_to(top, across.value());
    overview.set_seen(top, page_rows());
    if (on_scrolled)
        on_scrolled();
}

void SideBySide::set_top(std::size_t seen)
{
    down.setValue(as_int(seen));
}

void SideBySide::scroll_to_row(std::size_t row)
{
    if (row < all.comparison().row_count())
        set_top(all.map().seen_at(row));
}

void SideBySide::name_column(std::size_t index, const QString& name, const Contributor& contributor)
{
    boxes[index]->header().show_contributor(name, QString::fromLocal8Bit(contributor.path.c_str()),
                                            contributor.facts);
}

void SideBySide::go_to_row(std::size_t row)
{
    if (all.map().count() == 0)
        return;
    const std::size_t seen = all.map().seen_at(row);
    set_top(seen - std::min(seen, rows_above));
}

void SideBySide::go_to_difference(std::size_t index)
{
    all.set_current(index);
    const Block& block = all.comparison().difference(index);
    for (std::size_t contributor = 0; contributor < sources.size(); ++contributor) {
        const TextPosition begin{block.lines[contributor].begin, 0};
        column(contributor).select(begin, begin);
    }
    const std::size_t seen = all.map().seen_at(block.first_row);
    const auto top = static_cast<std::size_t>(down.value());
    const bool is_seen = seen >= top + 1 && seen + block.row_count < top + page_rows();
    if (!is_seen)
        go_to_row(block.first_row);
    update_columns();
}

std::optional<std::size_t> SideBySide::next_difference() const
{
    const Comparison& comparison = all.comparison();
    if (const auto current = all.current_difference())
        return comparison.next_difference(comparison.difference(*current).first_row);
    if (comparison.row_count() == 0)
        return std::nullopt;
    const auto here = comparison.difference_at(top_row());
    return here ? here : comparison.next_difference(top_row());
}

std::optional<std::size_t> SideBySide::previous_difference() const
{
    const Comparison& comparison = all.comparison();
    const auto current = all.current_difference();
    return comparison.previous_difference(current ? comparison.difference(*current).first_row
                                                  : top_row());
}

void SideBySide::update_columns()
{
    for (ContributorBox* box : boxes)
        box->column().update();
}

void SideBySide::select_in(std::size_t index, TextPosition begin, TextPosition end)
{
    active = index;
    const std::size_t seen = sources[index]->row_of(end);
    if (all.map().at(seen).hidden > 0) {
        all.open_fold(seen);
        lay_out_again();
    }
    column(index).select(begin, end);
    reveal(index, begin);
    reveal(index, end);
}

void SideBySide::reveal(std::size_t index, TextPosition place)
{
    TextColumn& text = column(index);
    if (all.map().count() == 0 || sources[index]->line_count() == 0)
        return;
    const std::size_t seen = sources[index]->row_of(place);
    const auto top = static_cast<std::size_t>(down.value());
    const std::size_t page = page_rows();
    if (seen < top)
        set_top(top - seen > page ? seen - std::min(seen, page / 3) : seen);
    else if (seen >= top + page)
        set_top(seen - top > 2 * page ? seen - page / 3 : seen - page + 1);
    const QRect spot = text.rectangle_of(place);
    const int left = text.width() - static_cast<int>(text.text_width()) - text_inset;
    const int margin = static_cast<int>(style->metrics.cell() * 4);
    if (spot.x() < left)
        across.setValue(across.value() - (left - spot.x()) - margin);
    else if (spot.x() > text.width() - margin)
        across.setValue(across.value() + spot.x() - text.width() + margin);
}

void SideBySide::measure_widths()
{
    for (const auto& text : all.contributors())
        widest = widest_line(*text, style->metrics, widest);
    update_ranges();
}

void SideBySide::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    update_ranges();
}
