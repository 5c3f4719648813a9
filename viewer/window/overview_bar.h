/*
 * The whole text in one narrow bar: a mark for each difference, and a frame around what is seen.
 * Clicking or dragging goes there. Marks are painted once for each size and comparison.
 */
#pragma once

#include "viewer/window/view_style.h"

#include <QPixmap>
#include <QWidget>
#include <functional>
#include <vector>

/** Rows that have one tint. */
struct OverviewMark {
    std::size_t first_row = 0;
    std::size_t row_count = 0;
    Tint tint = Tint::changed;
};

class OverviewBar : public QWidget
{
  public:
    explicit OverviewBar(SharedStyle shared, QWidget* parent = nullptr);

    void set_style(SharedStyle shared);
    void set_marks(std::vector<OverviewMark> in_order, std::size_t rows);
    void set_seen(std::size_t first_row, std::size_t rows);

    /** The user wants that row in the middle. */
    std::function<void(std::size_t row)> on_wanted;

    QSize sizeHint() const override { return {18, 100}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

  private:
    double scale() const;
    void paint_marks();
    void want(int y);

    SharedStyle style;
    std::vector<OverviewMark> marks{};
    std::size_t row_count = 0;
    std::size_t seen_first = 0;
    std::size_t seen_count = 0;
    QPixmap painted{};
};
