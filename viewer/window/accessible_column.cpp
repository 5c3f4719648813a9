#include "viewer/window/accessible_column.h"

#include "viewer/core/characters.h"
#include "viewer/window/result_editor.h"
#include "viewer/window/text_moves.h"

#include <algorithm>

namespace
{

QString decoded(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

int utf16_length(std::string_view text)
{
    int length = 0;
    for (std::size_t at = 0; at < text.size();)
        length += take_character(text, at) > 0xffff ? 2 : 1;
    return length;
}

std::size_t byte_of(std::string_view line, int characters)
{
    std::size_t byte = 0;
    for (int passed = 0; passed < characters && byte < line.size();)
        passed += take_character(line, byte) > 0xffff ? 2 : 1;
    return byte;
}

QAccessibleInterface* accessible_of(const QString& /*class_name*/, QObject* object)
{
    auto* column = dynamic_cast<TextColumn*>(object);
    if (column == nullptr)
        return nullptr;
    return new AccessibleColumn(*column, dynamic_cast<ResultEditor*>(object) != nullptr);
}

} // namespace

void make_columns_accessible()
{
    static const bool installed = [] {
        QAccessible::installFactory(accessible_of);
        return true;
    }();
    static_cast<void>(installed);
}

AccessibleColumn::AccessibleColumn(TextColumn& shown, bool can_be_edited)
    : QAccessibleWidget(&shown, QAccessible::EditableText), column(shown), editable(can_be_edited)
{
}

void* AccessibleColumn::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State AccessibleColumn::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.multiLine = true;
    state.selectableText = true;
    state.readOnly = !editable;
    state.editable = editable;
    return state;
}

QString AccessibleColumn::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Value ? text(0, characterCount()) : QAccessibleWidget::text(kind);
}

void AccessibleColumn::count() const
{
    if (!starts.empty() && counted == column.version())
        return;
    counted = column.version();
    starts.assign(1, 0);
    const RowSource* source = column.source();
    const std::size_t lines = source != nullptr ? source->line_count() : 0;
    starts.reserve(lines + 1);
    for (std::size_t line = 0; line < lines; ++line)
        starts.push_back(starts.back() + utf16_length(source->line(line)) + 1);
}

int AccessibleColumn::offset_of(TextPosition place) const
{
    count();
    if (starts.size() == 1)
        return 0;
    const std::size_t line = std::min(place.line, starts.size() - 2);
    return starts[line] + utf16_length(column.source()->line(line).substr(0, place.byte));
}

TextPosition AccessibleColumn::place_of(int offset) const
{
    count();
    if (starts.size() == 1)
        return {};
    const auto behind = std::upper_bound(starts.begin(), starts.end() - 1, std::max(offset, 0));
    const auto line = static_cast<std::size_t>(behind - starts.begin()) - 1;
    return {line, byte_of(column.source()->line(line), offset - starts[line])};
}

int AccessibleColumn::characterCount() const
{
    count();
    return std::max(starts.back() - 1, 0);
}

void AccessibleColumn::selection(int /*index*/, int* start, int* end) const
{
    *start = column.has_selection() ? offset_of(column.selection_begin()) : 0;
    *end = column.has_selection() ? offset_of(column.selection_end()) : 0;
}

void AccessibleColumn::removeSelection(int /*index*/)
{
    column.select(column.caret(), column.caret());
}

void AccessibleColumn::setSelection(int /*index*/, int start, int end)
{
    column.place_caret(place_of(start), false);
    column.place_caret(place_of(end), true);
}

void AccessibleColumn::setCursorPosition(int position)
{
    column.place_caret(place_of(position), false);
}

QString AccessibleColumn::text(int start, int end) const
{
    const TextPosition last = place_of(end);
    QString all;
    for (TextPosition place = place_of(start); place < last; place = {place.line + 1, 0}) {
        const std::string_view line = column.source()->line(place.line);
        if (place.line == last.line)
            return all + decoded(line.substr(place.byte, last.byte - place.byte));
        all += decoded(line.substr(place.byte)) + QChar('\n');
    }
    return all;
}

QString AccessibleColumn::textAtOffset(int offset, QAccessible::TextBoundaryType boundary,
                                       int* start, int* end) const
{
    const TextPosition place = place_of(offset);
    if (starts.size() == 1) {
        *start = *end = 0;
        return {};
    }
    const std::string_view line = column.source()->line(place.line);
    TextPosition begin{place.line, 0};
    TextPosition behind{place.line, line.size()};
    if (boundary == QAccessible::CharBoundary) {
        begin = place;
        behind = next_character(*column.source(), place);
    } else if (boundary == QAccessible::WordBoundary) {
        const Span word = word_around(line, place.byte);
        begin.byte = word.begin;
        behind.byte = word.end;
    } else if (boundary == QAccessible::NoBoundary) {
        begin = {};
        behind = text_end(*column.source());
    }
    *start = offset_of(begin);
    *end = offset_of(behind);
    return text(*start, *end);
}

QRect AccessibleColumn::characterRect(int offset) const
{
    const TextPosition place = place_of(offset);
    const QRect begin = column.rectangle_of(place);
    const bool has_next = starts.size() > 1 && place < text_end(*column.source());
    const QRect next =
        has_next ? column.rectangle_of(next_character(*column.source(), place)) : begin;
    const int width = next.y() == begin.y() ? std::max(next.x() - begin.x(), 1) : 1;
    return {column.mapToGlobal(begin.topLeft()), QSize(width, begin.height())};
}

int AccessibleColumn::offsetAtPoint(const QPoint& point) const
{
    return offset_of(column.position_at(column.mapFromGlobal(point)));
}

void AccessibleColumn::scrollToSubstring(int start, int /*end*/)
{
    column.place_caret(place_of(start), false);
}

QString AccessibleColumn::attributes(int /*offset*/, int* start, int* end) const
{
    *start = 0;
    *end = characterCount();
    return {};
}
