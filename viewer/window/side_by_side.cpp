#include "viewer/window/side_by_side.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGridLayout>
#include <QTimerEvent>
#include <algorithm>

SideBySide::SideBySide(SharedStyle shared, QWidget* parent)
    : QWidget(parent),
      style(std::move(shared)),
      splitter(Qt::Horizontal, this),
      bars(this),
      overview(style, this)
{
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(&splitter, 0, 0, 2, 1);
    layout->addWidget(&bars.down(), 1, 1); // beside the text, beneath the height of the headers
    layout->addWidget(&overview, 1, 2);
    layout->addWidget(&bars.across(), 2, 0);
    layout->setRowStretch(1, 1);
    splitter.setChildrenCollapsible(false);
    splitter.setHandleWidth(3);
    bars.down().setFocusPolicy(Qt::NoFocus);
    bars.across().setFocusPolicy(Qt::NoFocus);
    bars.down().setAccessibleName(QCoreApplication::translate("SideBySide", "Rows"));
    bars.across().setAccessibleName(
        QCoreApplication::translate("SideBySide", "Columns of characters"));
    for (QScrollBar* bar : {&bars.down(), &bars.across()})
        QObject::connect(bar, &QScrollBar::valueChanged, this, [this] { scroll_columns(); });
    QObject::connect(&splitter, &QSplitter::splitterMoved, this, [this] { update_wrapping(); });
    overview.on_wanted = [this](std::size_t seen) {
        bars.set_top(seen - std::min(seen, page_rows() / 2));
    };
    all.set_style(style);
    set_box_count(2);
    layout->setRowMinimumHeight(0, boxes.front()->header().sizeHint().height());
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
        splitter.setStretchFactor(splitter.count() - 1, 1);
        connect_box(boxes.size() - 1);
    }
    splitter.setSizes(QList<int>(splitter.count(), 10000));
}

void SideBySide::connect_box(std::size_t index)
{
    TextColumn& text = boxes[index]->column();
    text.installEventFilter(this);
    text.on_wheel = [this](int rows, int pixels) { bars.move_by(rows, pixels); };
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
    all.set_style(style);
    overview.set_style(style);
    for (ContributorBox* box : boxes)
        box->column().set_style(style);
    measure_widths();
    update_wrapping();
    lay_out_again();
    bars.set_top(all.map().count() == 0 ? 0 : all.map().seen_at(row));
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
    bars.down().setValue(0);
    bars.across().setValue(0);
    measure_widths();
    update_wrapping();
    lay_out_again();
}

void SideBySide::show_comparison(Comparison comparison)
{
    const bool has_rows = all.map().count() > 0 && !all.contributors().empty();
    const auto line = has_rows ? all.comparison().line_at(top_row(), 0) : std::nullopt;
    const bool at_top = bars.top() == 0;
    all.show(all.contributors(), std::move(comparison));
    lay_out_again();
    if (line && !at_top)
        bars.set_top(all.map().seen_at(all.comparison().row_of(0, *line)));
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
    bars.set_rows(all.map().count(), page_rows());
    bars.set_width(widest.width(), boxes.front()->column(), *style);
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
            bars.set_top(all.map().seen_at(row));
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
    for (ContributorBox* box : boxes)
        box->column().scroll_to(bars.top(), bars.left());
    overview.set_seen(bars.top(), page_rows());
    if (on_scrolled)
        on_scrolled();
}

void SideBySide::name_column(std::size_t index, const QString& name, const Contributor& contributor)
{
    boxes[index]->header().show_contributor(name, QString::fromLocal8Bit(contributor.path.c_str()),
                                            contributor.facts);
}

void SideBySide::update_columns()
{
    for (ContributorBox* box : boxes)
        box->column().update();
}

/** A piece whenever there is nothing else to do. */
void SideBySide::measure_widths()
{
    widest.start(all.contributors());
    measuring.start(0, this);
}

void SideBySide::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != measuring.timerId())
        return QWidget::timerEvent(event);
    const qreal before = widest.width();
    if (!widest.go_on(style->metrics))
        measuring.stop();
    if (widest.width() > before)
        update_ranges();
}

void SideBySide::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    update_ranges();
}
