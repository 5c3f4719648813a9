/*
 * The contributors' columns side by side, which scroll as one, with their scroll bars and the
 * overview. It shows what CompareRows lays out and goes where it is told.
 */
#pragma once

#include "viewer/window/compare_rows.h"
#include "viewer/window/contributor_box.h"
#include "viewer/window/overview_bar.h"
#include "viewer/window/scroll_bars.h"
#include "viewer/window/widest_line.h"

#include <QBasicTimer>
#include <QSplitter>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

class SideBySide : public QWidget
{
  public:
    explicit SideBySide(SharedStyle shared, QWidget* parent = nullptr);

    void set_style(SharedStyle shared);

    /** All texts from the top, not compared yet. */
    void show_contributors(const Contributors& contributors);

    /** Puts the lines side by side as compared; what was at the top stays there. */
    void show_comparison(Comparison comparison);

    CompareRows& rows() { return all; }
    const CompareRows& rows() const { return all; }

    std::size_t column_count() const { return sources.size(); }
    TextColumn& column(std::size_t index) { return boxes[index]->column(); }

    /** The column that has the focus or had it last. */
    std::size_t active_column() const { return active; }

    /** Makes a difference the one at hand, and shows it with some rows above. */
    void go_to_difference(std::size_t index);

    /** The difference behind, or before, the one at hand, or else what is seen first. */
    std::optional<std::size_t> next_difference() const;
    std::optional<std::size_t> previous_difference() const;

    /** Shows a row of the comparison. */
    void go_to_row(std::size_t row);

    /** Puts a row of the comparison at the top. */
    void scroll_to_row(std::size_t row);

    /** The first contributor's line that is seen first. */
    std::size_t top_line() const;

    /** Puts that line, or the last one, at the top. */
    void scroll_to_line(std::size_t line);

    /** Shows what is collapsed next below the caret, or else above it. */
    void open_nearest_fold();

    /** Selects in one column, and shows it. */
    void select_in(std::size_t index, TextPosition begin, TextPosition end);

    /** What is folded, wrapped or tinted has changed. */
    void lay_out_again();

    /** Something that rows show beside their text has changed. */
    void update_columns();
    void update_marks();

    /** Another name above a column. */
    void name_column(std::size_t index, const QString& name, const Contributor& contributor);

    std::function<void(std::size_t column)> on_caret_moved;
    std::function<void()> on_scrolled;
    std::function<void(int steps)> on_zoom;
    std::function<void(std::size_t column, QPoint global)> on_context_menu;

    /** The first row of the comparison that is seen. */
    std::size_t top_row() const;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    void set_box_count(std::size_t count);
    void connect_box(std::size_t index);
    void update_ranges();
    void update_wrapping();
    void scroll_columns();
    void reveal(std::size_t index, TextPosition place);
    void measure_widths();
    std::size_t page_rows() const;

    SharedStyle style;
    CompareRows all{};
    std::vector<std::unique_ptr<CompareColumn>> sources{};
    std::vector<ContributorBox*> boxes{}; // owned by the splitter
    QSplitter splitter;
    ScrollBars bars;
    OverviewBar overview;
    std::size_t active = 0;
    WidestLine widest{};
    QBasicTimer measuring{};
    bool laying_out = false;
};
