/*
 * The compare of two contributors or more: the differences to go through, and what compares again.
 * The texts are shown at once; differences follow from a thread.
 */
#pragma once

#include "viewer/window/background_job.h"
#include "viewer/window/text_page.h"

#include <optional>

class CompareView : public TextPage
{
    Q_DECLARE_TR_FUNCTIONS(CompareView)

  public:
    explicit CompareView(SharedStyle shared, QWidget* parent = nullptr);

    void set_style(SharedStyle shared) override;
    void add_menus(QMenuBar& menus, QToolBar& tools) override;
    bool succeeds() const override { return all_shown(contributors); }
    void cancel() override;
    void show_read(Contributors all) override;
    void wait_a_little() override;

    void go_to_next();
    void go_to_previous();
    void go_to_first();
    void go_to_last();
    void swap_order();

  protected:
    void caret_moved() override;

  private:
    struct Outcome {
        Comparison comparison{};
        Likeness alike{};
    };

    void compare_again();
    void take_comparison(Outcome outcome);
    void tell_likeness(const Likeness& alike);
    void tell_position();
    void go_to(std::optional<std::size_t> difference);
    void fill_difference_menu(QMenu& menu, QToolBar& tools);

    bool is_compared = false;
    bool wants_next = false; // the next difference, as soon as there is one
    BackgroundJob<Outcome> job;
};
