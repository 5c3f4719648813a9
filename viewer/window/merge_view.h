/*
 * The merge: the contributors above, the result below. Both go through the same regions; the region
 * at hand can take any contributor's lines, several in an order, or what is typed. Saving is
 * offered when nothing is unresolved.
 */
#pragma once

#include "viewer/core/merge_result.h"
#include "viewer/window/background_job.h"
#include "viewer/window/merge_scrolling.h"
#include "viewer/window/result_pane.h"
#include "viewer/window/text_page.h"

#include <QAction>
#include <QSplitter>
#include <memory>
#include <optional>
#include <sys/types.h>

class MergeView : public TextPage
{
    Q_DECLARE_TR_FUNCTIONS(MergeView)

  public:
    explicit MergeView(SharedStyle shared, QWidget* parent = nullptr);

    /** To be called first. The result goes to `output`; a new file gets the mode 0666 without the
        bits of `file_mode_mask`. */
    void prepare_merge(Contributors unread, std::string output, mode_t file_mode_mask);

    void set_style(SharedStyle shared) override;
    void add_menus(QMenuBar& menus, QToolBar& tools) override;
    void cancel() override;
    void show_read(Contributors all) override;
    void wait_a_little() override;
    bool succeeds() const override { return is_saved; }
    bool has_unsaved_work() const override { return result && result->has_unsaved_work(); }
    bool can_save() const override;

    /** Writes the output; then the page wants to be closed. A failure is told, and nothing lost. */
    void save() override;

    /** Null before the merge is planned. */
    MergeResult* merged() { return result.get(); }
    ResultPane& result_pane() { return pane; }

    void go_to_region(std::size_t region);
    void go_to_next();
    void go_to_previous();
    void go_to_next_unresolved();
    void go_to_previous_unresolved();

    // For the region at hand.
    void take(std::size_t contributor);
    void take_also(std::size_t contributor);
    void take_none();
    void put_back();

    void undo();
    void redo();

  protected:
    std::vector<TextColumn*> texts() override;
    std::size_t active_text() const override;
    void select_in(std::size_t text, TextPosition begin, TextPosition end) override;
    void caret_moved() override;
    void with_consent(const std::function<void()>& action) override;
    void fill_edit_menu(QMenu& menu) override;

  private:
    void plan_again();
    void take_plan(MergePlan plan);
    void show_result(std::unique_ptr<MergeResult> merged);
    void result_changed();
    void tell_state();
    void set_current(std::optional<std::size_t> region);
    BlockLook look(const Block& block, std::size_t contributor) const;
    void change_region(const std::function<void(std::size_t region)>& change);
    void set_ancestor(bool first_is_ancestor);
    std::optional<std::size_t> region_beside(bool forward) const;
    std::optional<std::size_t> first_unresolved() const;
    void name_columns();
    void name_result();
    void fill_difference_menu(QMenu& menu, QToolBar& tools);
    void fill_merge_menu(QMenu& menu, QToolBar& tools);
    void fill_take_entries(QMenu& menu, QToolBar& tools);
    void update_entries();
    QString numbered_name(std::size_t contributor) const;

    std::string output_path{};
    mode_t mode_mask = 0;
    bool has_ancestor = false;
    bool is_saved = false;
    std::unique_ptr<MergeResult> result{};
    std::optional<std::size_t> current{}; // region
    QSplitter* halves; // owned by this: it outlives the columns, which it would delete
    ResultPane pane;
    MergeScrolling scrolling;
    QAction* save_entry = nullptr;
    QAction* undo_entry = nullptr;
    QAction* redo_entry = nullptr;
    QAction* ancestor_entry = nullptr; // with three contributors or more
    std::vector<QAction*> take_entries{};
    BackgroundJob<MergePlan> job;
};
