// What the user does in a column: mouse, wheel and the keys that move the caret.
#include "viewer/window/text_column.h"
#include "viewer/window/text_moves.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleHints>
#include <QTimerEvent>
#include <QWheelEvent>
#include <algorithm>

namespace
{

constexpr int drag_interval = 40;
constexpr int wheel_notch = 120;

} // namespace

void TextColumn::move_caret(TextPosition place, bool keep_anchor)
{
    caret_place = rows != nullptr ? within(*rows, place) : TextPosition{};
    if (!keep_anchor)
        anchor = caret_place;
    caret_shown = true;
    update();
    tell_caret();
    if (on_caret_moved)
        on_caret_moved();
}

void TextColumn::mousePressEvent(QMouseEvent* event)
{
    if (rows == nullptr || event->button() != Qt::LeftButton)
        return;
    const int down = event->pos().y() / style->metrics.line_height();
    const std::size_t row = top + static_cast<std::size_t>(std::max(down, 0));
    if (row < rows->row_count() && rows->row(row).kind == RowKind::fold) {
        if (on_fold_clicked)
            on_fold_clicked(row);
        return;
    }
    wanted_x = -1;
    move_caret(position_at(event->pos()), event->modifiers().testFlag(Qt::ShiftModifier));
}

void TextColumn::mouseMoveEvent(QMouseEvent* event)
{
    if (!event->buttons().testFlag(Qt::LeftButton))
        return;
    drag_point = event->pos();
    if (rect().contains(drag_point))
        dragging.stop();
    else if (!dragging.isActive())
        dragging.start(drag_interval, this);
    drag_to(drag_point);
}

void TextColumn::drag_to(QPoint point)
{
    wanted_x = -1;
    move_caret(position_at(point), true);
}

void TextColumn::mouseReleaseEvent(QMouseEvent* event)
{
    dragging.stop();
    offer_selection();
    QWidget::mouseReleaseEvent(event);
}

/** For pasting with the middle button, where that is usual. */
void TextColumn::offer_selection() const
{
    QClipboard& clipboard = *QGuiApplication::clipboard();
    if (has_selection() && clipboard.supportsSelection())
        clipboard.setText(selected_text(), QClipboard::Selection);
}

void TextColumn::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (rows == nullptr || rows->line_count() == 0)
        return;
    const TextPosition place = position_at(event->pos());
    const Span word = word_around(rows->line(place.line), place.byte);
    select({place.line, word.begin}, {place.line, word.end});
}

void TextColumn::wheelEvent(QWheelEvent* event)
{
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        if (on_zoom && event->angleDelta().y() != 0)
            on_zoom(event->angleDelta().y() > 0 ? 1 : -1);
        return;
    }
    const QPoint turn = event->modifiers().testFlag(Qt::ShiftModifier)
                            ? event->angleDelta().transposed()
                            : event->angleDelta();
    wheel_rest -= turn.y() * QGuiApplication::styleHints()->wheelScrollLines();
    const int moved_rows = wheel_rest / wheel_notch;
    wheel_rest -= moved_rows * wheel_notch;
    const int pixels = static_cast<int>(-turn.x() * style->metrics.cell() * 4 / wheel_notch);
    if (on_wheel)
        on_wheel(moved_rows, pixels);
    event->accept();
}

TextPosition TextColumn::moved_by_rows(std::ptrdiff_t count) const
{
    const auto here = static_cast<std::ptrdiff_t>(rows->row_of(caret_place));
    const auto last = static_cast<std::ptrdiff_t>(rows->row_count()) - 1;
    std::ptrdiff_t row =
        std::clamp<std::ptrdiff_t>(here + count, 0, std::max<std::ptrdiff_t>(last, 0));
    const std::ptrdiff_t step = count < 0 ? -1 : 1;
    while (row >= 0 && row <= last && !rows->row(static_cast<std::size_t>(row)).has_line())
        row += step;
    if (row < 0 || row > last)
        return caret_place;
    if (wanted_x < 0)
        wanted_x = rectangle_of(caret_place).x();
    const PaintedRow goal = rows->row(static_cast<std::size_t>(row));
    const int margin = margin_width(rows->line_count(), style->metrics);
    const qreal x = wanted_x - margin - text_inset + scrolled;
    return {goal.line, goal.part.begin + shape_of(goal)->byte_at(x)};
}

TextPosition TextColumn::moved(int key, bool by_word) const
{
    const auto page = static_cast<std::ptrdiff_t>(page_rows());
    switch (key) {
    case Qt::Key_Left:
        return by_word ? previous_word(*rows, caret_place) : previous_character(*rows, caret_place);
    case Qt::Key_Right:
        return by_word ? next_word(*rows, caret_place) : next_character(*rows, caret_place);
    case Qt::Key_Up:
        return moved_by_rows(-1);
    case Qt::Key_Down:
        return moved_by_rows(1);
    case Qt::Key_PageUp:
        return moved_by_rows(-page);
    case Qt::Key_PageDown:
        return moved_by_rows(page);
    case Qt::Key_Home:
        return by_word ? TextPosition{} : TextPosition{caret_place.line, 0};
    default:
        return by_word ? text_end(*rows)
                       : TextPosition{caret_place.line, rows->line(caret_place.line).size()};
    }
}

void TextColumn::keyPressEvent(QKeyEvent* event)
{
    static constexpr std::array keys{Qt::Key_Left,   Qt::Key_Right,    Qt::Key_Up,   Qt::Key_Down,
                                     Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End};
    const auto others =
        event->modifiers() & ~(Qt::ShiftModifier | Qt::ControlModifier | Qt::KeypadModifier);
    if (rows == nullptr || rows->line_count() == 0 || others != Qt::NoModifier ||
        std::ranges::find(keys, event->key()) == keys.end()) {
        QWidget::keyPressEvent(event);
        return;
    }
    static constexpr std::array vertical{Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp,
                                         Qt::Key_PageDown};
    if (std::ranges::find(vertical, event->key()) == vertical.end())
        wanted_x = -1;
    move_caret(moved(event->key(), event->modifiers().testFlag(Qt::ControlModifier)),
               event->modifiers().testFlag(Qt::ShiftModifier));
}

void TextColumn::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == dragging.timerId())
        drag_to(drag_point);
    if (event->timerId() == blinking.timerId()) {
        caret_shown = !caret_shown;
        update(rectangle_of(caret_place).adjusted(-2, 0, 2, 0));
    }
}

void TextColumn::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    caret_shown = true;
    const int flash = QGuiApplication::styleHints()->cursorFlashTime();
    if (flash > 1)
        blinking.start(flash / 2, this);
    update();
}

void TextColumn::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    blinking.stop();
    update();
}

void TextColumn::contextMenuEvent(QContextMenuEvent* event)
{
    if (on_context_menu)
        on_context_menu(event->globalPos());
}
