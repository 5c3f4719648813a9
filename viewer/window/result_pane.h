/*
 * The result of a merge: its editor with scroll bars, overview and a header. It shows and edits a
 * MergeResult that another owns.
 */
#pragma once

#include "viewer/window/column_header.h"
#include "viewer/window/overview_bar.h"
#include "viewer/window/result_editor.h"
#include "viewer/window/result_rows.h"
#include "viewer/window/scroll_bars.h"

#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

class ResultPane : public QWidget
{
  public:
    explicit ResultPane(SharedStyle shared, QWidget* parent = nullptr);

    void set_style(SharedStyle shared);

    /** Null while there is none. */
    void show_result(MergeResult* merged);

    /** The result has changed other than by typing. */
    void result_changed();

    void set_current(std::optional<std::size_t> region);

    /** Shows a region, with some rows above. */
    void go_to_region(std::size_t region);
    void go_to_row(std::size_t row);
    void select(TextPosition begin, TextPosition end);

    /** The first row of the result that is seen. */
    std::size_t top_row() const;
    std::optional<std::size_t> region_at_caret() const;

    ResultEditor& editor() { return text; }
    ColumnHeader& header() { return title; }

    std::function<void()> on_edited;
    std::function<void()> on_caret_moved;
    std::function<void()> on_scrolled;
    std::function<void(int steps)> on_zoom;
    std::function<void(QPoint global)> on_context_menu;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void update_ranges();
    void update_width();
    void update_marks();
    void scroll();
    void reveal(TextPosition place);

    SharedStyle style;
    MergeResult* result = nullptr;
    std::unique_ptr<ResultRows> rows{};
    ColumnHeader title;
    ResultEditor text;
    ScrollBars bars;
    OverviewBar overview;
    qreal widest = 0; // of the lines seen so far
};
