/*
 * One column of painted rows with a margin, a caret and a selection. It holds no text and no scroll
 * bar: a RowSource makes the rows that are seen, and whoever owns the column tells it what is at
 * its top. What the user does beyond moving the caret is told through the callbacks.
 */
#pragma once

#include "viewer/window/row_painter.h"
#include "viewer/window/row_source.h"
#include "viewer/window/view_style.h"

#include <QBasicTimer>
#include <QString>
#include <QWidget>
#include <functional>
#include <map>
#include <memory>

class TextColumn : public QWidget
{
  public:
    explicit TextColumn(SharedStyle shared, QWidget* parent = nullptr);

    void set_style(SharedStyle shared);

    /** The source must live as long as it is shown; null shows nothing. */
    void set_source(const RowSource* source);
    const RowSource* source() const { return rows; }

    /** The source's rows have changed. Keeps the caret where it can. */
    void rows_changed();

    void scroll_to(std::size_t top_row, qreal left);
    std::size_t top_row() const { return top; }

    /** How many rows fit as a whole. */
    std::size_t page_rows() const;

    /** The width that is left for text. */
    qreal text_width() const;

    TextPosition caret() const { return caret_place; }
    TextPosition selection_begin() const { return std::min(anchor, caret_place); }
    TextPosition selection_end() const { return std::max(anchor, caret_place); }
    bool has_selection() const { return anchor != caret_place; }
    QString selected_text() const;

    /** Moves the caret, and the selection's other end too, without a callback. */
    void select(TextPosition begin, TextPosition end);
    void select_all();

    /** As the user does it: told, and shown. */
    void place_caret(TextPosition place, bool keep_anchor) { move_caret(place, keep_anchor); }

    /** Another number for every change of the rows. */
    std::size_t version() const { return changes; }
    void copy() const;

    /** What to mark wherever it is seen; empty for nothing. */
    void set_phrase(const QString& wanted, bool match_case);

    /** Where a place is in the widget; for the input method and for accessibility. */
    QRect rectangle_of(TextPosition place) const;
    TextPosition position_at(QPoint point) const;

    std::function<void(int rows, int pixels)> on_wheel;
    std::function<void(int steps)> on_zoom;
    std::function<void()> on_caret_moved; // by the user
    std::function<void(std::size_t row)> on_fold_clicked;
    std::function<void(QPoint global)> on_context_menu;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

    /** The user moved the caret. */
    void move_caret(TextPosition place, bool keep_anchor);
    const SharedStyle& shared_style() const { return style; }

  private:
    std::shared_ptr<const LineShape> shape_of(const PaintedRow& row) const;
    RowLook look_of(const PaintedRow& row, const QRect& area) const;
    void look_at_selection(const PaintedRow& row, RowLook& look) const;
    std::vector<Span> hits_in(std::string_view line) const;
    TextPosition nearest_line(std::size_t row) const;
    TextPosition moved(int key, bool by_word) const;
    TextPosition moved_by_rows(std::ptrdiff_t count) const;
    void drag_to(QPoint point);
    void tell_caret();
    void offer_selection() const;

    SharedStyle style;
    const RowSource* rows = nullptr;
    std::size_t top = 0;
    std::size_t changes = 0;
    qreal scrolled = 0;
    TextPosition caret_place{};
    TextPosition anchor{};
    mutable qreal wanted_x = -1; // of the caret, while it moves up and down
    std::string phrase{};
    bool phrase_case = false;
    QBasicTimer blinking{};
    QBasicTimer dragging{};
    bool caret_shown = true;
    QPoint drag_point{};
    int wheel_rest = 0;
    mutable std::map<std::pair<const char*, std::size_t>, std::shared_ptr<const LineShape>>
        shapes{};
};
