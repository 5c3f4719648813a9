#include "viewer/window/overview_bar.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace
{

constexpr double least_mark = 2; // in pixels; what is smaller could not be seen

} // namespace

OverviewBar::OverviewBar(SharedStyle shared, QWidget* parent)
    : QWidget(parent), style(std::move(shared))
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFixedWidth(OverviewBar::sizeHint().width());
    setAccessibleName(QCoreApplication::translate("OverviewBar", "Overview of all differences"));
}

void OverviewBar::set_style(SharedStyle shared)
{
    style = std::move(shared);
    painted = {};
    update();
}

void OverviewBar::set_marks(std::vector<OverviewMark> in_order, std::size_t rows)
{
    marks = std::move(in_order);
    row_count = rows;
    painted = {};
    update();
}

void OverviewBar::set_seen(std::size_t first_row, std::size_t rows)
{
    seen_first = first_row;
    seen_count = rows;
    update();
}

/** Pixels for each row. A short text is not stretched: a row is no higher than in the columns. */
double OverviewBar::scale() const
{
    const auto rows = static_cast<double>(std::max<std::size_t>(row_count, 1));
    return std::min(height() / rows, static_cast<double>(style->metrics.line_height()));
}

void OverviewBar::paint_marks()
{
    painted = QPixmap(size() * devicePixelRatioF());
    painted.setDevicePixelRatio(devicePixelRatioF());
    painted.fill(style->palette.gutter);
    QPainter painter(&painted);
    double free_from = -1; // where no mark of the same tint covers the pixels yet
    Tint last = Tint::none;
    for (const OverviewMark& mark : marks) {
        const double y = static_cast<double>(mark.first_row) * scale();
        const double length = std::max(static_cast<double>(mark.row_count) * scale(), least_mark);
        if (mark.tint == last && y + length <= free_from)
            continue;
        painter.fillRect(QRectF(3, y, width() - 6, length), style->palette.mark(mark.tint));
        free_from = y + length;
        last = mark.tint;
    }
}

void OverviewBar::paintEvent(QPaintEvent* /*event*/)
{
    if (painted.isNull() || painted.size() != size() * devicePixelRatioF())
        paint_marks();
    QPainter painter(this);
    painter.drawPixmap(0, 0, painted);
    if (seen_count >= row_count)
        return; // all is seen
    const double y = static_cast<double>(seen_first) * scale();
    const double length = std::max(static_cast<double>(seen_count) * scale(), 6.0);
    QColor veil = style->palette.text;
    veil.setAlphaF(0.12F);
    const QRectF frame(0.5, y + 0.5, width() - 1, std::min(length, height() - y) - 1);
    painter.fillRect(frame, veil);
    painter.setPen(style->palette.faint_text);
    painter.drawRect(frame);
}

void OverviewBar::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        want(event->pos().y());
}

void OverviewBar::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons().testFlag(Qt::LeftButton))
        want(event->pos().y());
}

void OverviewBar::want(int y)
{
    if (!on_wanted || row_count == 0)
        return;
    const auto row = static_cast<std::size_t>(std::max(y, 0) / scale());
    on_wanted(std::min(row, row_count - 1));
}
