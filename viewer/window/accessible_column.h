/*
 * A painted column as a text for assistive technology: its characters, caret and selection. Places
 * are counted in UTF-16 over the whole text, lines ending with one character; how many each line
 * has is counted when somebody asks for the first time.
 */
#pragma once

#include "viewer/window/text_column.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <vector>

/** Columns become texts for assistive technology. To be called once, before any column is shown. */
void make_columns_accessible();

class AccessibleColumn : public QAccessibleWidget, public QAccessibleTextInterface
{
  public:
    AccessibleColumn(TextColumn& shown, bool can_be_edited);

    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;
    QString text(QAccessible::Text kind) const override;

    void selection(int index, int* start, int* end) const override;
    int selectionCount() const override { return column.has_selection() ? 1 : 0; }
    void addSelection(int start, int end) override { setSelection(0, start, end); }
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;
    int cursorPosition() const override { return offset_of(column.caret()); }
    void setCursorPosition(int position) override;
    QString text(int start, int end) const override;
    QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                         int* end) const override;
    int characterCount() const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int start, int end) override;
    QString attributes(int offset, int* start, int* end) const override;

  private:
    void count() const;
    int offset_of(TextPosition place) const;
    TextPosition place_of(int offset) const;

    TextColumn& column;
    bool editable;
    mutable std::vector<int> starts{}; // of each line, and the end
    mutable std::size_t counted = 0;   // the version of the column's rows
};
