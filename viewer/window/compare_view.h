/*
 * The compare of two contributors or more: their columns, the differences to go through, finding,
 * and what compares again. The texts are shown at once; differences follow from a thread.
 */
#pragma once

#include "viewer/window/comparison_job.h"
#include "viewer/window/contributor.h"
#include "viewer/window/find_bar.h"
#include "viewer/window/notice_bar.h"
#include "viewer/window/option_menus.h"
#include "viewer/window/side_by_side.h"
#include "viewer/window/viewer_page.h"

#include <QCoreApplication>
#include <QFileSystemWatcher>
#include <memory>

class CompareView : public ViewerPage
{
    Q_DECLARE_TR_FUNCTIONS(CompareView)

  public:
    explicit CompareView(SharedStyle shared, QWidget* parent = nullptr);

    void show_contributors(Contributors all);

    void set_style(SharedStyle shared) override;
    void add_menus(QMenuBar& menus, QToolBar& tools) override;
    void take_focus() override;
    void after_shown() override;
    bool succeeds() const override { return all_shown(contributors); }
    void cancel() override;

    /** The columns, for whoever drives the view. */
    SideBySide& columns() { return side; }
    FindBar& finder() { return find; }
    const NoticeBar& notice() const { return strip; }

    void go_to_next();
    void go_to_previous();
    void go_to_first();
    void go_to_last();

    /** Makes the lines of that number, counted from 1, seen in the active column. */
    void go_to_line(std::size_t number);
    void find_phrase(bool forward);

    /** Reads all contributors again. */
    void reload();
    void swap_order();

  private:
    void compare_again();
    void take_comparison(ComparisonOutcome outcome);
    void tell_likeness(const Likeness& alike);
    void tell_position();
    void tell_caret();
    void go_to(std::optional<std::size_t> difference);
    std::size_t row_at_hand() const;
    void ask_for_line();
    void watch_files();
    void mark_phrase();
    void show_context_menu(std::size_t column, QPoint global);
    void fill_edit_menu(QMenu& menu);
    void fill_difference_menu(QMenu& menu, QToolBar& tools);
    OptionChanges option_changes();

    SharedStyle style;
    Contributors contributors{};
    NoticeBar strip;
    SideBySide side;
    FindBar find;
    std::unique_ptr<QFileSystemWatcher> watcher{}; // made late: it starts a thread
    bool was_shown = false;
    bool is_compared = false;
    ComparisonJob job;
};
