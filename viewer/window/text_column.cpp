#include "viewer/window/text_column.h"

#include "viewer/core/search.h"
#include "viewer/window/text_moves.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

namespace
{

constexpr std::size_t long_line = 4096; // bytes from which on a line's shape is kept
constexpr std::size_t most_hits = 1000; // marked in one line

QString decoded(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

TextColumn::TextColumn(SharedStyle shared, QWidget* parent)
    : QWidget(parent), style(std::move(shared))
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::IBeamCursor);
    setMinimumWidth(80);
}

void TextColumn::set_style(SharedStyle shared)
{
    style = std::move(shared);
    shapes.clear();
    update();
}

void TextColumn::set_source(const RowSource* source)
{
    rows = source;
    caret_place = {};
    anchor = {};
    rows_changed();
}

void TextColumn::rows_changed()
{
    shapes.clear();
    ++changes;
    if (rows != nullptr) {
        caret_place = within(*rows, caret_place);
        anchor = within(*rows, anchor);
    }
    update();
}

void TextColumn::scroll_to(std::size_t top_row, qreal left)
{
    if (top == top_row && scrolled == left)
        return;
    top = top_row;
    scrolled = left;
    update();
}

std::size_t TextColumn::page_rows() const
{
    return static_cast<std::size_t>(std::max(height() / style->metrics.line_height(), 1));
}

qreal TextColumn::text_width() const
{
    const std::size_t lines = rows != nullptr ? rows->line_count() : 0;
    return std::max(width() - margin_width(lines, style->metrics) - 2 * text_inset, 20);
}

QString TextColumn::selected_text() const
{
    if (rows == nullptr || !has_selection())
        return {};
    return decoded(rows->text_between(selection_begin(), selection_end()));
}

void TextColumn::select(TextPosition begin, TextPosition end)
{
    anchor = begin;
    caret_place = end;
    wanted_x = -1;
    tell_caret();
    update();
}

/** Tells assistive technology where the caret is. */
void TextColumn::tell_caret()
{
    if (!QAccessible::isActive())
        return;
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(this);
    if (accessible == nullptr || accessible->textInterface() == nullptr)
        return;
    QAccessibleTextCursorEvent event(this, accessible->textInterface()->cursorPosition());
    QAccessible::updateAccessibility(&event);
}

void TextColumn::select_all()
{
    if (rows != nullptr)
        select({}, text_end(*rows));
}

void TextColumn::copy() const
{
    if (has_selection())
        QGuiApplication::clipboard()->setText(selected_text());
}

void TextColumn::set_phrase(const QString& wanted, bool match_case)
{
    phrase = wanted.toStdString();
    phrase_case = match_case;
    update();
}

std::shared_ptr<const LineShape> TextColumn::shape_of(const PaintedRow& row) const
{
    const auto text = row.text.substr(row.part.begin, row.part.end - row.part.begin);
    if (text.size() < long_line)
        return std::make_shared<LineShape>(text, style->metrics);
    auto& kept = shapes[{text.data(), text.size()}];
    if (!kept)
        kept = std::make_shared<LineShape>(text, style->metrics);
    return kept;
}

std::vector<Span> TextColumn::hits_in(std::string_view line) const
{
    std::vector<Span> hits;
    if (phrase.empty() || line.size() < phrase.size())
        return hits;
    const SearchOptions options{.match_case = phrase_case, .wrap = false};
    auto hit = find_next(line, phrase, 0, options);
    while (hit && hits.size() < most_hits) {
        hits.push_back(*hit);
        hit = find_next(line, phrase, hit->end, options);
    }
    return hits;
}

void TextColumn::look_at_selection(const PaintedRow& row, RowLook& look) const
{
    const bool is_last_part = row.part.end == row.text.size();
    const bool has_caret = caret_place.line == row.line && caret_place.byte >= row.part.begin &&
                           (caret_place.byte < row.part.end || is_last_part);
    if (has_caret && hasFocus() && caret_shown)
        look.caret = caret_place.byte;
    const TextPosition begin = selection_begin();
    const TextPosition end = selection_end();
    if (begin == end || row.line < begin.line || row.line > end.line)
        return;
    look.selected = Span{row.line == begin.line ? begin.byte : 0,
                         row.line == end.line ? end.byte : row.text.size()};
    look.end_selected = row.line < end.line && is_last_part;
}

RowLook TextColumn::look_of(const PaintedRow& row, const QRect& area) const
{
    RowLook look{.area = area,
                 .margin = margin_width(rows->line_count(), style->metrics),
                 .scrolled = scrolled};
    if (row.kind == RowKind::text)
        look.hits = hits_in(row.text);
    if (row.has_line())
        look_at_selection(row, look);
    return look;
}

void TextColumn::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    const int row_height = style->metrics.line_height();
    const std::size_t count = rows != nullptr ? rows->row_count() : 0;
    int y = 0;
    for (std::size_t index = top; index < count && y < height(); ++index, y += row_height) {
        const QRect area(0, y, width(), row_height);
        if (!event->rect().intersects(area))
            continue;
        const PaintedRow row = rows->row(index);
        paint_row(painter, row, look_of(row, area), *shape_of(row), *style);
    }
    const int margin = margin_width(rows != nullptr ? rows->line_count() : 0, style->metrics);
    if (y < height())
        paint_below(painter, {0, y, width(), height() - y}, margin, style->palette);
}

TextPosition TextColumn::nearest_line(std::size_t row) const
{
    for (std::size_t index = row; index < rows->row_count(); ++index)
        if (const PaintedRow found = rows->row(index); found.has_line())
            return {found.line, found.part.begin};
    return text_end(*rows);
}

TextPosition TextColumn::position_at(QPoint point) const
{
    if (rows == nullptr || rows->row_count() == 0)
        return {};
    const int down = point.y() / style->metrics.line_height() - (point.y() < 0 ? 1 : 0);
    const auto wanted = static_cast<std::ptrdiff_t>(top) + down;
    if (wanted < 0)
        return {};
    const auto index = static_cast<std::size_t>(wanted);
    if (index >= rows->row_count())
        return text_end(*rows);
    const PaintedRow row = rows->row(index);
    if (!row.has_line())
        return nearest_line(index);
    const int margin = margin_width(rows->line_count(), style->metrics);
    const qreal x = point.x() - margin - text_inset + scrolled;
    return {row.line, row.part.begin + shape_of(row)->byte_at(x)};
}

QRect TextColumn::rectangle_of(TextPosition place) const
{
    if (rows == nullptr || rows->row_count() == 0)
        return {0, 0, 1, style->metrics.line_height()};
    const std::size_t index = rows->row_of(place);
    const PaintedRow row = rows->row(index);
    const qreal x = row.has_line() && place.byte >= row.part.begin
                        ? shape_of(row)->x_of(place.byte - row.part.begin)
                        : 0;
    const int margin = margin_width(rows->line_count(), style->metrics);
    const auto down = static_cast<std::ptrdiff_t>(index) - static_cast<std::ptrdiff_t>(top);
    return {margin + text_inset + static_cast<int>(x - scrolled),
            static_cast<int>(down) * style->metrics.line_height(), 1, style->metrics.line_height()};
}
