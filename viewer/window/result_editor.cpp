#include "viewer/window/result_editor.h"

#include "viewer/window/text_moves.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPainter>

namespace
{

/** Whether a key types something. */
bool types(const QKeyEvent& event)
{
    const auto modifiers = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    const bool plain = modifiers == Qt::NoModifier ||
                       modifiers == (Qt::ControlModifier | Qt::AltModifier); // the third level
    return plain && !event.text().isEmpty() && event.text().front().isPrint();
}

bool edits(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        return !event.modifiers().testFlag(Qt::AltModifier);
    case Qt::Key_Tab:
        return event.modifiers() == Qt::NoModifier;
    default:
        return false;
    }
}

} // namespace

ResultEditor::ResultEditor(SharedStyle shared, QWidget* parent)
    : TextColumn(std::move(shared), parent)
{
    setAttribute(Qt::WA_InputMethodEnabled);
}

void ResultEditor::replace(TextPosition begin, TextPosition end, const QString& text, bool join)
{
    const ResultPosition behind =
        result->replace({begin.line, begin.byte}, {end.line, end.byte}, text.toStdString(), join);
    const TextPosition place{behind.row, behind.column};
    on_edited();
    move_caret(place, false);
    typed_to = place;
}

void ResultEditor::type(const QString& text)
{
    const bool joins = goes_on && !has_selection() && caret() == typed_to;
    replace(selection_begin(), selection_end(), text, joins);
    goes_on = true;
}

void ResultEditor::erase(TextPosition to)
{
    if (has_selection())
        replace(selection_begin(), selection_end(), {}, false);
    else if (to != caret())
        replace(std::min(to, caret()), std::max(to, caret()), {}, false);
    goes_on = false;
}

void ResultEditor::cut()
{
    if (result == nullptr || !has_selection())
        return;
    copy();
    erase(caret());
}

void ResultEditor::paste()
{
    if (result == nullptr)
        return;
    replace(selection_begin(), selection_end(), QGuiApplication::clipboard()->text(), false);
    goes_on = false;
}

bool ResultEditor::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && result != nullptr) {
        const auto& key = static_cast<QKeyEvent&>(*event);
        if (types(key) || edits(key)) { // letters are shortcuts elsewhere
            event->accept();
            return true;
        }
    }
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent&>(*event).key() == Qt::Key_Tab) {
        keyPressEvent(static_cast<QKeyEvent*>(event)); // not to the next widget
        return true;
    }
    return TextColumn::event(event);
}

void ResultEditor::keyPressEvent(QKeyEvent* event)
{
    const bool by_word = event->modifiers().testFlag(Qt::ControlModifier);
    if (result == nullptr || (!types(*event) && !edits(*event))) {
        goes_on = false;
        TextColumn::keyPressEvent(event);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        type(QStringLiteral("\n"));
        break;
    case Qt::Key_Tab:
        type(QStringLiteral("\t"));
        break;
    case Qt::Key_Backspace:
        erase(by_word ? previous_word(*source(), caret()) : previous_character(*source(), caret()));
        break;
    case Qt::Key_Delete:
        erase(by_word ? next_word(*source(), caret()) : next_character(*source(), caret()));
        break;
    default:
        type(event->text());
    }
}

void ResultEditor::inputMethodEvent(QInputMethodEvent* event)
{
    composed = event->preeditString();
    if (result != nullptr && !event->commitString().isEmpty())
        type(event->commitString());
    update();
    event->accept();
}

QVariant ResultEditor::inputMethodQuery(Qt::InputMethodQuery query) const
{
    switch (query) {
    case Qt::ImEnabled:
        return result != nullptr;
    case Qt::ImCursorRectangle:
        return rectangle_of(caret());
    case Qt::ImFont:
        return shared_style()->metrics.font();
    case Qt::ImCurrentSelection:
        return selected_text();
    default:
        return TextColumn::inputMethodQuery(query);
    }
}

void ResultEditor::paintEvent(QPaintEvent* event)
{
    TextColumn::paintEvent(event);
    if (composed.isEmpty())
        return;
    QPainter painter(this);
    const ViewStyle& look = *shared_style();
    painter.setFont(look.metrics.font());
    QRect area = rectangle_of(caret());
    area.setWidth(painter.fontMetrics().horizontalAdvance(composed) + 2);
    painter.fillRect(area, look.palette.background);
    painter.setPen(look.palette.text);
    painter.drawText(QPointF(area.left(), area.top() + look.metrics.ascent()), composed);
    painter.drawLine(area.bottomLeft(), area.bottomRight());
}
